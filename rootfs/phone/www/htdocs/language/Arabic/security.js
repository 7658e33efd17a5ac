export default {
  // Password
  "The passwords for the phone's web pages.": "كلمات المرور لصفحات الويب في الهاتف.",
  "The user whose password you change.": "المستخدم الذي تغيّر كلمة مروره.",
  "Old password": "كلمة المرور القديمة",
  "Your password until now.": "كلمة مرورك حتى الآن.",
  "New password": "كلمة المرور الجديدة",
  "Password strength": "قوة كلمة المرور",
  "Weak": "ضعيفة",
  "Fair": "مقبولة",
  "Good": "جيدة",
  "Strong": "قوية",
  "Length matters most. Several unrelated words make a good password.": "الطول هو الأهم. عدة كلمات لا صلة بينها تصنع كلمة مرور جيدة.",
  "Repeat the new password": "تكرار كلمة المرور الجديدة",
  "A typing error would lock you out.": "خطأ في الكتابة يمنعك من الدخول.",
};
