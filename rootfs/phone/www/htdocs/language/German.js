window.phoneLanguage = {
  code: "de",
  direction: "ltr",
  // Further texts of the pages whose names begin so.
  sections: {
    account: "/language/German/account.js",
    contacts: "/language/German/contacts.js",
    features: "/language/German/features.js",
    hidden: "/language/German/hidden.js",
    network: "/language/German/network.js",
    security: "/language/German/security.js",
    settings: "/language/German/settings.js",
  },
  texts: {
    // Frame
    "Desk phone": "Tischtelefon",
    "Menu": "Menü",
    "Skip to the content": "Zum Inhalt springen",
    "Logged in as": "Angemeldet als",
    "Log in": "Anmelden",
    "Log out": "Abmelden",
    "Status": "Status",
    "Account": "Konto",
    "Network": "Netzwerk",
    "Features": "Funktionen",
    "Register": "Registrierung",
    "Basic": "Grundlagen",
    "Settings": "Einstellungen",
    "Directory": "Verzeichnis",
    "Security": "Sicherheit",
    "Codecs": "Codecs",
    "Advanced": "Erweitert",
    "Off": "Aus",
    "Save": "Speichern",
    "Save and restart": "Speichern und neu starten",
    "Save only": "Nur speichern",
    "Cancel": "Abbrechen",
    "Go back": "Zurück",
    "As now": "Wie bisher",
    "Saved.": "Gespeichert.",
    "The changes are not saved. Leave them?": "Die Änderungen sind nicht gespeichert. Verwerfen?",
    "Not saved: please correct the marked fields.": "Nicht gespeichert: Bitte berichtigen Sie die markierten Felder.",
    "These settings take effect when the phone restarts.": "Diese Einstellungen gelten nach einem Neustart des Telefons.",
    "Restart the phone now?": "Telefon jetzt neu starten?",
    "Some settings take effect only when the phone restarts. Until it is back, nobody can call with it.": "Manche Einstellungen gelten erst nach einem Neustart des Telefons. Bis es wieder bereit ist, kann niemand damit telefonieren.",
    "This page is not open to your user level.": "Diese Seite ist für Ihre Benutzerstufe nicht freigegeben.",
    "You have been logged out. Open the page again to log in.": "Sie wurden abgemeldet. Öffnen Sie die Seite erneut, um sich anzumelden.",
    "Caps Lock is on.": "Die Feststelltaste ist aktiv.",

    // Checks
    "This field must be filled in.": "Dieses Feld muss ausgefüllt werden.",
    "Enter a whole number from %1 to %2.": "Geben Sie eine ganze Zahl von %1 bis %2 ein.",
    "Enter an IPv4 address such as 192.168.1.20.": "Geben Sie eine IPv4-Adresse wie 192.168.1.20 ein.",
    "Enter an IPv6 address such as 2001:db8::20.": "Geben Sie eine IPv6-Adresse wie 2001:db8::20 ein.",
    "Enter a subnet mask such as 255.255.255.0.": "Geben Sie eine Subnetzmaske wie 255.255.255.0 ein.",
    "Enter a host name or an IP address.": "Geben Sie einen Hostnamen oder eine IP-Adresse ein.",
    "This address is in another network than %1.": "Diese Adresse liegt in einem anderen Netz als %1.",
    "The last address comes before the first.": "Die letzte Adresse liegt vor der ersten.",
    "Type the whole password.": "Geben Sie das ganze Passwort ein.",
    "Enter a number from %1 to %2.": "Geben Sie eine Zahl von %1 bis %2 ein.",
    "Enter a number above %1.": "Geben Sie eine Zahl über %1 ein.",
    "Enter an address such as https://server.example/folder.": "Geben Sie eine Adresse wie https://server.example/ordner ein.",
    "Enter a multicast address such as 224.0.1.75:5010.": "Geben Sie eine Multicast-Adresse wie 224.0.1.75:5010 ein.",
    "Enter a number or name without spaces.": "Geben Sie eine Nummer oder einen Namen ohne Leerzeichen ein.",
    "Enter exactly 16 characters.": "Geben Sie genau 16 Zeichen ein.",
    "The two passwords differ.": "Die beiden Passwörter sind verschieden.",

    // Waiting for the phone
    "Notice": "Hinweis",
    "Open the page now": "Seite jetzt öffnen",
    "Waiting for the phone: %1 s": "Warten auf das Telefon: %1 s",
    "The phone has not come back yet. It may have another address now: its screen shows it.": "Das Telefon ist noch nicht wieder erreichbar. Vielleicht hat es jetzt eine andere Adresse; sein Bildschirm zeigt sie.",
    "The phone does not answer. Please try again.": "Das Telefon antwortet nicht. Bitte versuchen Sie es noch einmal.",
    "The phone does not answer. The page goes on when it is back.": "Das Telefon antwortet nicht. Die Seite läuft weiter, sobald es wieder da ist.",
    "Rebooting , please wait ...": "Das Telefon startet neu, bitte warten …",
    "Talking, Please wait...": "Ein Gespräch läuft, deshalb wurde nichts geändert. Bitte versuchen Sie es danach noch einmal.",
    "Configuration updating ...": "Das Telefon holt seine Einstellungen, bitte warten …",
    "no such account!": "Dieses Konto gibt es nicht.",
    "Error:There is no such account!": "Dieses Konto gibt es nicht.",
    "The username or password is error!": "Benutzername oder Passwort ist falsch.",
    "You are not authorized to access the web interface. Please contact your support team or try again 3 minutes later. HTTP 401": "Zu viele Fehlversuche. Bitte versuchen Sie es in 3 Minuten noch einmal oder wenden Sie sich an Ihren Support.",
    "No space left!": "Auf dem Telefon ist nicht genug Platz.",
    "Error:No space left!": "Auf dem Telefon ist nicht genug Platz.",
    "Error:The destination folder does not exist!": "Das Telefon hat keinen Ordner für diese Datei.",

    // Status
    "Live": "Aktuell",
    "Pause": "Anhalten",
    "Resume": "Fortsetzen",
    "Paused": "Angehalten",
    "Away": "Nicht erreichbar",
    "Version": "Version",
    "Firmware": "Firmware",
    "Hardware": "Hardware",
    "Accounts": "Konten",
    "No.": "Nr.",
    "User name": "Benutzername",
    "Server": "Server",
    "State": "Zustand",
    "Disabled": "Abgeschaltet",
    "Registering": "Wird registriert",
    "Registered": "Registriert",
    "Register Failed": "Registrierung fehlgeschlagen",
    "Unregistered": "Nicht registriert",
    "Inexistence": "Nicht vorhanden",
    "Unknown": "Unbekannt",
    "Link": "Verbindung",
    "Connected": "Verbunden",
    "UnConnected": "Nicht verbunden",
    "MAC address": "MAC-Adresse",
    "Address mode": "Adressart",
    "PC port": "PC-Anschluss",
    "PC port address": "Adresse des PC-Anschlusses",
    "Bridge": "Brücke",
    "Router": "Router",
    "Connection type": "Verbindungsart",
    "Static IP": "Feste IP",
    "IP address": "IP-Adresse",
    "Subnet mask": "Subnetzmaske",
    "Gateway": "Gateway",
    "Primary DNS": "Erster DNS",
    "Secondary DNS": "Zweiter DNS",
    "DHCP server for the PC port": "DHCP-Server für den PC-Anschluss",
    "Running": "Läuft",
    "Stoped": "Angehalten",
    "Expansion modules": "Erweiterungsmodule",
    "Modules connected": "Angeschlossene Module",
    "Module": "Modul",

    // Network
    "The stored password is not shown. Leave the field as it is to keep it.": "Das gespeicherte Passwort wird nicht gezeigt. Lassen Sie das Feld unverändert, um es zu behalten.",

    // Register
    "Account%d": "Konto %d",
    "Auto": "Automatisch",
    "Label": "Beschriftung",
    "Password": "Passwort",

    // Basic account page
    "Calls": "Anrufe",
    "Ring": "Klingelton",
    "Common": "Gemeinsamer",
    "On code": "Code zum Einschalten",
    "Off code": "Code zum Ausschalten",

    // Advanced account page
    "Registration": "Registrierung",
    "Directed pickup code": "Code für gezielte Übernahme",
    "Group pickup code": "Code für Gruppenübernahme",

    // Forward and DND
    "Forward and DND": "Umleitung und Ruhe",

    // Rings
    "Rings": "Klingeltöne",
    "Play": "Abspielen",
    "Play: %1": "Abspielen: %1",
    "Stop": "Anhalten",

    // Multicast paging
    "Multicast paging": "Durchsagen",

    // Provisioning
    "Provisioning": "Bereitstellung",

    // Password
    "You have changed the password!": "Das Passwort ist geändert.",
    "Error:The password is error!": "Das alte Passwort ist falsch.",
    "Error:You don't have enough jurisdiction!": "Sie dürfen dieses Passwort nicht ändern.",
    "Please login before the operator!": "Bitte melden Sie sich zuerst an.",

    // Audio
    "Audio": "Audio",
    "Tones": "Töne",
    "Call waiting tone": "Anklopfton",
    "Key tones": "Tastentöne",
    "Each key that is pressed makes a sound.": "Jede gedrückte Taste macht einen Ton.",
    "Send key tone": "Ton der Wähltaste",
    "The key that starts a call makes a sound.": "Die Taste, die einen Anruf startet, macht einen Ton.",

    // Bluetooth
    "Bluetooth": "Bluetooth",

    // Call pickup
    "Call pickup": "Rufübernahme",

    // General features
    "General": "Allgemein",
    "Keep # in numbers": "# in Nummern behalten",
    "# is sent as it is dialled. When off, it is sent as %23.": "# wird gesendet, wie es gewählt wurde. Ausgeschaltet wird es als %23 gesendet.",
    "SIP": "SIP",
    "Hold as in RFC 2543": "Halten wie in RFC 2543",
    "Holds with the address 0.0.0.0, as old systems expect it.": "Hält mit der Adresse 0.0.0.0, wie es alte Anlagen erwarten.",
    "Outbound proxy within calls": "Ausgehender Proxy in Gesprächen",
    "Messages within a call go through the outbound proxy too.": "Auch Nachrichten innerhalb eines Gesprächs gehen über den ausgehenden Proxy.",
    "Ring after early sound": "Freizeichen nach Ansage",
    "A ring tone takes the place of the network's announcement when the other phone begins to ring.": "Ein Freizeichen ersetzt die Ansage des Netzes, wenn das andere Telefon zu klingeln beginnt.",
    "Upload": "Hochladen",
    "Start wizard": "Startassistent",
    "After a start, the phone asks who uses it.": "Nach einem Start fragt das Telefon, wer es benutzt.",

    // Upload
    "success": "Die Datei ist auf dem Telefon.",
    "fail": "Das Telefon konnte die Datei nicht speichern.",
    "big": "Die Datei ist zu groß für das Telefon.",
    "talking": "Ein Gespräch läuft, deshalb wurde nichts geändert. Bitte versuchen Sie es danach noch einmal.",

    // Intercom
    "Intercom": "Intercom",

    // Transfer
    "Transfer": "Vermitteln",
    "Semi-attended transfer": "Halb begleitete Vermittlung",
    "A call may be passed on while the other phone still rings.": "Ein Gespräch darf weitergegeben werden, während das andere Telefon noch klingelt.",
    "Blind transfer by hanging up": "Blinde Vermittlung durch Auflegen",
    "After the number is dialled, hanging up passes the call on without asking.": "Nach dem Wählen der Nummer gibt Auflegen das Gespräch ohne Rückfrage weiter.",
    "Leave a conference to the others": "Konferenz den anderen überlassen",
    "When this phone hangs up, the other two stay connected.": "Legt dieses Telefon auf, bleiben die beiden anderen verbunden.",

    // Phone lock
    "Phone lock": "Telefonsperre",

    // Area code
    "Area code": "Ortsvorwahl",

    // Tones
    "Custom": "Eigene",

    // Voice
    "Voice": "Sprache",

    // Action URL
    "Action URL": "Action-URL",

    // Remote control
    "Remote control": "Fernsteuerung",

    // Checks of codes, lists and tones
    "Enter digits only.": "Geben Sie nur Ziffern ein.",
    "Enter digits, *, # and + only.": "Geben Sie nur Ziffern, *, # und + ein.",
    "Enter digits, *, # and the letters A to D only.": "Geben Sie nur Ziffern, *, # und die Buchstaben A bis D ein.",
    "Enter 1 to 15 digits.": "Geben Sie 1 bis 15 Ziffern ein.",
    "Enter numbers separated by commas, without spaces, such as 112,911.": "Geben Sie Nummern durch Kommas getrennt und ohne Leerzeichen ein, etwa 112,911.",
    "Enter the numbers of accounts separated by commas, such as 1,2.": "Geben Sie die Nummern von Konten durch Kommas getrennt ein, etwa 1,2.",
    "Enter IP addresses separated by commas, such as 192.168.1.20,192.168.1.21.": "Geben Sie IP-Adressen durch Kommas getrennt ein, etwa 192.168.1.20,192.168.1.21.",
    "Enter IP addresses separated by commas, without spaces, with * for any part, or the word any.": "Geben Sie IP-Adressen durch Kommas getrennt und ohne Leerzeichen ein, mit * für einen beliebigen Teil, oder das Wort any.",
    "Enter an address that begins with http:// or https://, without spaces.": "Geben Sie eine Adresse ohne Leerzeichen ein, die mit http:// oder https:// beginnt.",
    "Enter pieces such as 425/480 separated by commas, without spaces.": "Geben Sie Stücke wie 425/480 durch Kommas getrennt und ohne Leerzeichen ein.",
    "Enter at least %1.": "Geben Sie mindestens %1 ein.",
    "Enter at most %1.": "Geben Sie höchstens %1 ein.",
  },
};
