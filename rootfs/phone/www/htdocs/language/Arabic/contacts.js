export default {
  // Multicast paging
  "Announcements that are sent to many phones at once.": "نداءات تُرسَل إلى هواتف كثيرة في آن واحد.",
  "Receiving": "الاستقبال",
  "Receive announcements": "استقبال النداءات",
  "The phone plays what comes to the addresses below.": "يشغّل الهاتف ما يصل إلى العناوين أدناه.",
  "Priority": "الأولوية",
  "Announcements at the addresses up to this number may break into a call. 0: none may.": "يجوز للنداءات على العناوين حتى هذا الرقم أن تقطع مكالمة. ‏0: لا يجوز لأي منها.",
  "Addresses": "العناوين",
  "Address 1 is the most important one. An address is one of 224.0.0.0 to 239.255.255.255 with a port, such as 224.0.1.75:5010.": "العنوان 1 هو الأهم. يقع العنوان بين 224.0.0.0 و 239.255.255.255 ومعه منفذ، مثل 224.0.1.75:5010.",
  "Address": "العنوان",
};
