export default {
  // Password
  "The passwords for the phone's web pages.": "Die Passwörter für die Webseiten des Telefons.",
  "The user whose password you change.": "Der Benutzer, dessen Passwort Sie ändern.",
  "Old password": "Altes Passwort",
  "The password that you use now.": "Das Passwort, das Sie jetzt benutzen.",
  "New password": "Neues Passwort",
  "Password strength": "Stärke des Passworts",
  "Weak": "Schwach",
  "Fair": "Mäßig",
  "Good": "Gut",
  "Strong": "Stark",
  "Length matters most. Several unrelated words make a good password.": "Am wichtigsten ist die Länge. Mehrere Wörter, die nichts miteinander zu tun haben, sind ein gutes Passwort.",
  "Repeat the new password": "Neues Passwort wiederholen",
  "Protects you from a typing error.": "Schützt vor Tippfehlern.",
};
