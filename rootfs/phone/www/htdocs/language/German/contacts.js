export default {
  // Multicast paging
  "Announcements that are sent to many phones at once.": "Durchsagen, die an viele Telefone zugleich gehen.",
  "Receiving": "Empfang",
  "Receive announcements": "Durchsagen empfangen",
  "The phone plays what comes to the addresses below.": "Das Telefon gibt wieder, was an die Adressen darunter kommt.",
  "Priority": "Vorrang",
  "Announcements at the addresses up to this number may break into a call. 0: none may.": "Durchsagen an die Adressen bis zu dieser Nummer dürfen ein Gespräch unterbrechen. 0: keine.",
  "Addresses": "Adressen",
  "Address 1 is the most important one. An address is one of 224.0.0.0 to 239.255.255.255 with a port, such as 224.0.1.75:5010.": "Adresse 1 ist die wichtigste. Eine Adresse liegt zwischen 224.0.0.0 und 239.255.255.255 und hat einen Port, zum Beispiel 224.0.1.75:5010.",
  "Address": "Adresse",
};
