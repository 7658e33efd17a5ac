export default {
  // Multicast paging
  "Announcements to many phones at once.": "Durchsagen an viele Telefone zugleich.",
  "Receiving": "Empfang",
  "Receive announcements": "Durchsagen empfangen",
  "The phone plays announcements to the addresses below.": "Das Telefon spielt Durchsagen an die Adressen darunter ab.",
  "Priority": "Vorrang",
  "Announcements to the addresses up to this number interrupt a call. 0: none does.": "Durchsagen an die Adressen bis zu dieser Nummer unterbrechen ein Gespräch. 0: keine.",
  "Addresses": "Adressen",
  "Address 1 has the highest priority. Use addresses from 224.0.0.0 to 239.255.255.255 with a port, such as 224.0.1.75:5010.": "Adresse 1 hat den höchsten Vorrang. Adressen von 224.0.0.0 bis 239.255.255.255 mit Port, zum Beispiel 224.0.1.75:5010.",
  "Address": "Adresse",
};
