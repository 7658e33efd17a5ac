export default {
  // Password
  "The passwords for the phone's web pages.": "كلمات المرور لصفحات الويب في الهاتف.",
  "The user whose password you change.": "المستخدم الذي تغيّر كلمة مروره.",
  "Old password": "كلمة المرور القديمة",
  "The password that you use now.": "كلمة المرور التي تستخدمها الآن.",
  "New password": "كلمة المرور الجديدة",
  "Password strength": "قوة كلمة المرور",
  "Weak": "ضعيفة",
  "Fair": "مقبولة",
  "Good": "جيدة",
  "Strong": "قوية",
  "Length matters most. Several unrelated words make a good password.": "الطول هو الأهم. عدة كلمات لا صلة بينها تصنع كلمة مرور جيدة.",
  "Repeat the new password": "تكرار كلمة المرور الجديدة",
  "Protects you from a typing error.": "يحميك من خطأ في الكتابة.",
};
