window.phoneLanguage = {
  code: "ar",
  direction: "rtl",
  // Further texts of the pages whose names begin so.
  sections: {
    account: "/language/Arabic/account.js",
    contacts: "/language/Arabic/contacts.js",
    features: "/language/Arabic/features.js",
    hidden: "/language/Arabic/hidden.js",
    network: "/language/Arabic/network.js",
    security: "/language/Arabic/security.js",
    settings: "/language/Arabic/settings.js",
  },
  texts: {
    // Frame
    "Desk phone": "هاتف مكتبي",
    "Menu": "القائمة",
    "Skip to the content": "الانتقال إلى المحتوى",
    "Logged in as": "مسجَّل الدخول باسم",
    "Log in": "تسجيل الدخول",
    "Log out": "تسجيل الخروج",
    "Status": "الحالة",
    "Account": "الحساب",
    "Network": "الشبكة",
    "Features": "الميزات",
    "Basic": "أساسي",
    "Settings": "الإعدادات",
    "Directory": "الدليل",
    "Security": "الأمان",
    "Codecs": "برامج الترميز",
    "Advanced": "متقدم",
    "Off": "إيقاف",
    "Save": "حفظ",
    "Save and restart": "حفظ وإعادة التشغيل",
    "Save only": "حفظ فقط",
    "Cancel": "إلغاء",
    "Go back": "رجوع",
    "Show": "عرض",
    "Current value": "القيمة الحالية",
    "Saved.": "تم الحفظ.",
    "Discard the unsaved changes?": "هل تريد تجاهل التغييرات غير المحفوظة؟",
    "Not saved. Please correct the marked fields.": "لم يتم الحفظ. يُرجى تصحيح الحقول المحددة.",
    "These settings take effect when the phone restarts.": "تسري هذه الإعدادات بعد إعادة تشغيل الهاتف.",
    "Restart the phone now?": "هل تريد إعادة تشغيل الهاتف الآن؟",
    "Some settings take effect only after a restart. The phone cannot make or take calls until it is back.": "بعض الإعدادات لا تسري إلا بعد إعادة التشغيل. ولا يمكن إجراء المكالمات أو استقبالها حتى يعود الهاتف.",
    "Your user level may not see this page.": "هذه الصفحة غير متاحة لمستوى المستخدم لديك.",
    "You have been logged out. Reload the page to log in.": "تم تسجيل خروجك. أعد تحميل الصفحة لتسجيل الدخول.",
    "Caps Lock is on.": "مفتاح الأحرف الكبيرة مفعَّل.",

    // Checks
    "This field is required.": "هذا الحقل مطلوب.",
    "Enter a whole number from %1 to %2.": "أدخل عددًا صحيحًا من %1 إلى %2.",
    "Enter an IPv4 address such as 192.168.1.20.": "أدخل عنوان IPv4 مثل 192.168.1.20.",
    "Enter an IPv6 address such as 2001:db8::20.": "أدخل عنوان IPv6 مثل 2001:db8::20.",
    "Enter a subnet mask such as 255.255.255.0.": "أدخل قناع شبكة فرعية مثل 255.255.255.0.",
    "Enter a host name or an IP address.": "أدخل اسم مضيف أو عنوان IP.",
    "This address is not in the same network as %1.": "هذا العنوان ليس في شبكة %1 نفسها.",
    "The last address must not come before the first.": "يجب ألا يسبق العنوان الأخير العنوان الأول.",
    "Enter the whole password.": "أدخل كلمة المرور كاملة.",
    "Enter a number from %1 to %2.": "أدخل عددًا من %1 إلى %2.",
    "Enter a number above %1.": "أدخل عددًا أكبر من %1.",
    "Enter an address such as https://server.example/folder.": "أدخل عنوانًا مثل https://server.example/folder.",
    "Enter a multicast address such as 224.0.1.75:5010.": "أدخل عنوان بث متعدد مثل 224.0.1.75:5010.",
    "Enter a number or name without spaces.": "أدخل رقمًا أو اسمًا بلا مسافات.",
    "Enter exactly 16 characters.": "أدخل 16 حرفًا بالضبط.",
    "The passwords do not match.": "كلمتا المرور غير متطابقتين.",

    // Waiting for the phone
    "Notice": "إشعار",
    "Open the page now": "فتح الصفحة الآن",
    "Waiting for the phone: %1 s": "في انتظار الهاتف: %1 ث",
    "The phone has not come back yet. Its address may have changed: look at its screen.": "لم يعد الهاتف بعد. ربما تغيَّر عنوانه: انظر إلى شاشته.",
    "The phone does not answer. Please try again.": "الهاتف لا يستجيب. يُرجى المحاولة مرة أخرى.",
    "The phone does not answer. This page continues when it is back.": "الهاتف لا يستجيب. تتابع هذه الصفحة عملها عندما يعود.",
    "Rebooting , please wait ...": "يجري إعادة تشغيل الهاتف، يُرجى الانتظار…",
    "Talking, Please wait...": "هناك مكالمة جارية، لذلك لم يتغير شيء. يُرجى المحاولة بعد انتهائها.",
    "Configuration updating ...": "يجلب الهاتف إعداداته، يُرجى الانتظار…",
    "no such account!": "هذا الحساب غير موجود.",
    "Error:There is no such account!": "هذا الحساب غير موجود.",
    "The username or password is error!": "اسم المستخدم أو كلمة المرور غير صحيحة.",
    "You are not authorized to access the web interface. Please contact your support team or try again 3 minutes later. HTTP 401": "محاولات فاشلة كثيرة. يُرجى المحاولة بعد 3 دقائق أو الاتصال بفريق الدعم.",
    "No space left!": "لا توجد مساحة كافية على الهاتف.",
    "Error:No space left!": "لا توجد مساحة كافية على الهاتف.",
    "Error:The destination folder does not exist!": "لا يوجد على الهاتف مجلد لهذا الملف.",

    // Status
    "Live": "مباشر",
    "Pause": "إيقاف مؤقت",
    "Resume": "متابعة",
    "Paused": "متوقف مؤقتًا",
    "Offline": "غير متاح",
    "Version": "الإصدار",
    "Firmware": "البرنامج الثابت",
    "Hardware": "العتاد",
    "Accounts": "الحسابات",
    "No.": "الرقم",
    "User name": "اسم المستخدم",
    "Server": "الخادم",
    "State": "الحالة",
    "Disabled": "معطَّل",
    "Registering": "جارٍ التسجيل",
    "Registered": "مسجَّل",
    "Register Failed": "فشل التسجيل",
    "Unregistered": "غير مسجَّل",
    "Inexistence": "غير موجود",
    "Unknown": "غير معروف",
    "Link": "الوصلة",
    "Connected": "متصل",
    "UnConnected": "غير متصل",
    "MAC address": "عنوان MAC",
    "Address mode": "نوع العناوين",
    "PC port": "منفذ الحاسوب",
    "PC port address": "عنوان منفذ الحاسوب",
    "Bridge": "جسر",
    "Router": "موجِّه",
    "Connection type": "نوع الاتصال",
    "Static IP": "عنوان IP ثابت",
    "IP address": "عنوان IP",
    "Subnet mask": "قناع الشبكة الفرعية",
    "Gateway": "البوابة",
    "Primary DNS": "خادم DNS الأول",
    "Secondary DNS": "خادم DNS الثاني",
    "DHCP server for the PC port": "خادم DHCP لمنفذ الحاسوب",
    "Running": "يعمل",
    "Stoped": "متوقف",
    "Expansion modules": "وحدات التوسعة",
    "Connected modules": "الوحدات الموصولة",
    "Module": "الوحدة",

    // Network
    "The stored password is not shown. Leave the field as it is to keep it.": "لا تظهر كلمة المرور المحفوظة. اترك الحقل كما هو للإبقاء عليها.",

    // Register
    "Account%d": "الحساب %d",
    "Auto": "تلقائي",
    "Label": "التسمية",
    "Password": "كلمة المرور",
    "Display name": "الاسم المعروض",
    "The host name or IP address of the server.": "اسم مضيف الخادم أو عنوان IP.",
    "Port": "المنفذ",
    "Number": "الرقم",

    // Basic account page
    "Calls": "المكالمات",
    "Ring": "الرنين",
    "Common": "المشترك",
    "On code": "رمز التشغيل",
    "Off code": "رمز الإيقاف",

    // Advanced account page
    "Registration": "التسجيل",
    "Directed pickup code": "رمز الالتقاط الموجَّه",
    "Group pickup code": "رمز التقاط المجموعة",

    // Forward and DND
    "Forward and DND": "التحويل وعدم الإزعاج",

    // Rings
    "Rings": "الرنات",
    "Play": "تشغيل",
    "Play: %1": "تشغيل: %1",
    "Stop": "إيقاف الصوت",

    // Multicast paging
    "Multicast paging": "النداء الجماعي",

    // Lists that are put in order
    "Use": "استخدام",
    "Remove": "إزالة",
    "Move up: %1": "إلى أعلى: %1",
    "Move down: %1": "إلى أسفل: %1",
    "%1: %2, %3 of %4": "%1: %2، %3 من %4",

    // Keys
    "Keys": "المفاتيح",
    "Soft keys": "مفاتيح الشاشة",
    "Conference": "المؤتمر",
    "Dialling": "الاتصال",
    "Incoming call": "مكالمة واردة",
    "Call Info": "معلومات المكالمة",
    "Disp Code": "رمز المعالجة",
    "Line Selection": "اختيار الخط",

    // Directories
    "Favourites": "المفضلة",
    "Remote phone books": "دفاتر الهاتف البعيدة",
    "Network directories": "أدلة الشبكة",
    "History": "سجل المكالمات",
    "Network Calllog": "سجل مكالمات الشبكة",
    "Local Contacts": "جهات الاتصال",
    "Remote Phone Book": "دفاتر الهاتف البعيدة",
    "Network Directories": "أدلة الشبكة",
    "Remote Phonebook": "دفاتر الهاتف البعيدة",
    "Error:Write remote_phonebook_list.xml error!": "تعذّر على الهاتف حفظ دفاتر الهاتف.",
    // Call history
    "Call history": "سجل المكالمات",
    "Error:Item is wrong!": "لم يعد هذا الحساب موجودًا أو أن البيانات ناقصة.",

    // Dialling
    "call success": "يتصل الهاتف بهذا الرقم.",
    "call failed": "لم يتصل الهاتف. إما أن حاسوبك ليس من العناوين الموثوقة أو أن الرقم غير صحيح.",
    "hangup success": "أنهى الهاتف المكالمة.",

    // Provisioning
    "Provisioning": "التزويد",

    // Password
    "You have changed the password!": "تم تغيير كلمة المرور.",
    "Error:The password is error!": "كلمة المرور القديمة غير صحيحة.",
    "Error:You don't have enough jurisdiction!": "لا يحق لك تغيير كلمة المرور هذه.",
    "Please login before the operator!": "يُرجى تسجيل الدخول أولًا.",

    // Audio
    "Audio": "الصوت",
    "Tones": "النغمات",
    "Call waiting tone": "نغمة انتظار المكالمات",
    "Key tones": "نغمات المفاتيح",
    "Every key press makes a sound.": "يصدر صوت مع كل مفتاح يُضغط.",
    "Send key tone": "نغمة مفتاح الإرسال",
    "The key that starts a call makes its own sound.": "يصدر صوت خاص مع المفتاح الذي يبدأ المكالمة.",

    // Bluetooth
    "Bluetooth": "بلوتوث",

    // Call pickup
    "Call pickup": "التقاط المكالمات",

    // General features
    "General": "عام",
    "Send # unchanged": "إرسال # دون تغيير",
    "When off, a dialled # is sent as %23.": "عند الإيقاف تُرسل # المطلوبة بصيغة %23.",
    "SIP": "SIP",
    "RFC 2543 hold": "التعليق وفق RFC 2543",
    "Puts calls on hold with the address 0.0.0.0, for old systems.": "يعلّق المكالمات بالعنوان 0.0.0.0، للأنظمة القديمة.",
    "Outbound proxy during calls": "الوكيل الصادر أثناء المكالمات",
    "Messages during a call go through the outbound proxy too.": "تمر الرسائل داخل المكالمة أيضًا عبر الوكيل الصادر.",
    "Ring tone after early media": "رنين بعد الصوت المبكر",
    "A ring tone replaces the announcement when the other phone begins to ring.": "تحل نغمة رنين محل الإعلان عندما يبدأ الهاتف الآخر بالرنين.",
    "Delete": "حذف",
    "Upload": "رفع",
    "Choose a file first.": "اختر ملفًا أولًا.",
    "Setup wizard": "معالج الإعداد",
    "After a restart, the phone asks who uses it.": "بعد إعادة التشغيل يسأل الهاتف من يستخدمه.",

    // Upload
    "success": "الملف على الهاتف.",
    "fail": "لم يستطع الهاتف حفظ الملف.",
    "big": "الملف أكبر مما يسمح به الهاتف.",
    "talking": "هناك مكالمة جارية، لذلك لم يتغير شيء. يُرجى المحاولة بعد انتهائها.",

    // Intercom
    "Intercom": "الاتصال الداخلي",

    // Transfer
    "Transfer": "نقل المكالمات",
    "Semi-attended transfer": "النقل قبل الرد",
    "A call may be transferred while the other phone still rings.": "يجوز نقل المكالمة والهاتف الآخر ما زال يرن.",
    "Blind transfer on hanging up": "النقل المباشر عند إنهاء المكالمة",
    "Hanging up after dialling the number transfers the call.": "إنهاء المكالمة بعد طلب الرقم ينقلها.",
    "Continue conferences without this phone": "متابعة المؤتمر من دون هذا الهاتف",
    "When this phone hangs up, the other two stay connected.": "عندما ينهي هذا الهاتف المكالمة يبقى الآخران متصلين.",

    // Phone lock
    "Phone lock": "قفل الهاتف",

    // Area code
    "Area code": "رمز المنطقة",

    // Tones
    "Custom": "مخصصة",

    // Voice
    "Voice": "جودة الصوت",

    // Action URL
    "Action URL": "عناوين الأحداث",

    // Remote control
    "Remote control": "التحكم عن بعد",

    // Checks of codes, lists and tones
    "Enter digits only.": "أدخل أرقامًا فقط.",
    "Enter digits, *, # and + only.": "أدخل أرقامًا و* و# و+ فقط.",
    "Enter digits, *, # and the letters A to D only.": "أدخل أرقامًا و* و# والحروف من A إلى D فقط.",
    "Enter 1 to 15 digits.": "أدخل من 1 إلى 15 رقمًا.",
    "Enter numbers separated by commas, without spaces, such as 112,911.": "أدخل أرقامًا تفصل بينها فواصل دون مسافات، مثل 112,911.",
    "Enter account numbers separated by commas, such as 1,2.": "أدخل أرقام الحسابات تفصل بينها فواصل، مثل 1,2.",
    "Enter IP addresses separated by commas, such as 192.168.1.20,192.168.1.21.": "أدخل عناوين IP تفصل بينها فواصل، مثل 192.168.1.20,192.168.1.21.",
    "Enter IP addresses separated by commas, without spaces, with * for any part, or the word any.": "أدخل عناوين IP تفصل بينها فواصل دون مسافات، مع * لأي جزء، أو الكلمة any.",
    "Enter an address that begins with http:// or https://, without spaces.": "أدخل عنوانًا دون مسافات يبدأ بـ http:// أو https://.",
    "Enter parts such as 425/480 separated by commas, without spaces.": "أدخل أجزاء مثل 425/480 تفصل بينها فواصل دون مسافات.",
    "Enter a filter such as (|(cn=%)(sn=%)).": "أدخل مرشّحًا مثل (|(cn=%)(sn=%)).",
    "Enter at least %1.": "أدخل %1 على الأقل.",
    "Enter at most %1.": "أدخل %1 على الأكثر.",

    // Contacts
    "Contacts": "جهات الاتصال",
    "ignore": "عدم الاستيراد",
    "display_name": "الاسم",
    "office_number": "رقم المكتب",
    "mobile_number": "رقم الجوال",
    "other_number": "رقم آخر",
    "line": "الحساب",
    "ring": "الرنين",
    "group_id_name": "المجموعة",
    "default_photo": "الصورة",
    "photo_data": "بيانات الصورة",
    "Error:Group already existed!": "توجد مجموعة بهذا الاسم.",
    "Error:Contact already existed!": "توجد جهة اتصال بهذا الاسم.",
    "Error:Invalid group id!": "هذه المجموعة غير موجودة.",
    "Error:Group not existed!": "هذه المجموعة غير موجودة.",
    "Error:Contact not existed!": "لم تعد جهة الاتصال هذه موجودة.",
    "Error:Group can not delete!": "لا يمكن تغيير هذه المجموعة أو حذفها.",
    "Error:Contact list is full!": "الدليل ممتلئ.",
    "Error:Black list is full!": "القائمة السوداء ممتلئة.",
    "Error:Group list is full!": "لا يتسع الهاتف لمجموعة أخرى.",
    "Error:Contact is not local!": "جهة الاتصال هذه ليست في دليل الهاتف نفسه.",
    "Error:Contact is not black!": "جهة الاتصال هذه ليست في القائمة السوداء.",
    "Error:Contact is asyncing!": "تجري مزامنة الدليل. يُرجى المحاولة بعد قليل.",
    "Error:Network error!": "الشبكة لا تستجيب. يُرجى المحاولة مرة أخرى.",
    "Error:Photo name error!": "لا يقبل الهاتف هذه الصورة.",
    "Error:Other error!": "تعذر على الهاتف تنفيذ ذلك. أعد تحميل الصفحة وحاول مرة أخرى.",
    "Error:Invalid file!": "الملف تالف أو لا يحتوي على جهات اتصال.",
    "Error:Duplicate group!": "يحتوي الملف على مجموعتين بالاسم نفسه.",
    "Error:Duplcate contact!": "يحتوي الملف على جهتَي اتصال بالاسم نفسه.",
    "Error:Too many group!": "في الملف مجموعات أكثر مما يتسع له الهاتف.",
    "Error:Too many local contact!": "في الملف جهات اتصال أكثر مما يتسع له الهاتف.",
    "Error:Too many blacklist!": "في الملف جهات اتصال أكثر مما تتسع له القائمة السوداء.",
    "Error:Invalid path!": "لم يجد الهاتف الملف.",
    "Error:Group empty!": "في الملف مجموعة بلا اسم.",
    "Error:Contact name empty!": "في الملف جهة اتصال بلا اسم.",
    "Error:No default group!": "تنقص الملفَّ مجموعة كل جهات الاتصال.",
    "Error:No contact group!": "في الملف جهة اتصال لا تنتمي إلى أي مجموعة.",
    "Error:Upload error!": "تعذر على الهاتف استيراد الملف.",
    "Error:Export contact file error!": "تعذر على الهاتف تصدير دليله. يُرجى المحاولة مرة أخرى.",
    "Error:Import contact file error!": "لم يتلقَّ الهاتف ملفًا. يُرجى المحاولة مرة أخرى.",
    "Get CSVFile data error!": "لم يتلقَّ الهاتف ملف CSV يمكنه قراءته.",
    "Fail to upload photo ! [Can not compress the picture]": "لا يستطيع الهاتف استخدام هذه الصورة. اختر صورة JPEG أو PNG أو BMP حتى 5 ميغابايت.",
    "Fail to upload photo ! [The Resolution of the picture is too large]": "عدد وحدات البكسل في الصورة أكبر مما يقبله الهاتف.",
  },
};
