export default {
  // Password
  "With which the pages of the phone are opened.": "التي تُفتح بها صفحات الهاتف.",
  "Login name": "اسم الدخول",
  "Whose password is changed.": "صاحب كلمة المرور التي تُغيَّر.",
  "Old password": "كلمة المرور القديمة",
  "The password that holds now; it is asked for when you change your own.": "كلمة المرور السارية الآن، وتُطلب عندما تغيّر كلمتك.",
  "New password": "كلمة المرور الجديدة",
  "Strength of the password": "قوة كلمة المرور",
  "Weak": "ضعيفة",
  "Fair": "مقبولة",
  "Good": "جيدة",
  "Strong": "قوية",
  "Long is better than complicated: several words that do not belong together are good.": "الطول أفضل من التعقيد: عدة كلمات لا صلة بينها خيار جيد.",
  "New password again": "كلمة المرور الجديدة مرة أخرى",
  "So that no slip of the finger locks you out.": "حتى لا يمنعك خطأ في الكتابة من الدخول.",
};
