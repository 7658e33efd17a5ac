export default {
  // Multicast paging
  "Announcements to many phones at once.": "نداءات إلى هواتف كثيرة في آن واحد.",
  "Receiving": "الاستقبال",
  "Receive announcements": "استقبال النداءات",
  "The phone plays announcements to the addresses below.": "يشغّل الهاتف النداءات إلى العناوين أدناه.",
  "Priority": "الأولوية",
  "Announcements to the addresses up to this number interrupt a call. 0: none does.": "النداءات إلى العناوين حتى هذا الرقم تقطع المكالمة. ‏0: لا شيء منها.",
  "Addresses": "العناوين",
  "Address 1 has the highest priority. Use addresses from 224.0.0.0 to 239.255.255.255 with a port, such as 224.0.1.75:5010.": "للعنوان 1 أعلى أولوية. استخدم العناوين من 224.0.0.0 إلى 239.255.255.255 مع منفذ، مثل 224.0.1.75:5010.",
  "Address": "العنوان",
};
