export default {
  // Password
  "With which the pages of the phone are opened.": "Mit dem die Seiten des Telefons geöffnet werden.",
  "Login name": "Anmeldename",
  "Whose password is changed.": "Wessen Passwort geändert wird.",
  "Old password": "Altes Passwort",
  "The password that holds now; it is asked for when you change your own.": "Das jetzt gültige Passwort; danach wird gefragt, wenn Sie Ihr eigenes ändern.",
  "New password": "Neues Passwort",
  "Strength of the password": "Stärke des Passworts",
  "Weak": "Schwach",
  "Fair": "Mäßig",
  "Good": "Gut",
  "Strong": "Stark",
  "Long is better than complicated: several words that do not belong together are good.": "Lang ist besser als kompliziert: Mehrere Wörter, die nicht zusammengehören, sind gut.",
  "New password again": "Neues Passwort noch einmal",
  "So that no slip of the finger locks you out.": "Damit kein Vertippen Sie aussperrt.",
};
