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
    "Show": "Anzeigen",
    "Current value": "Aktueller Wert",
    "Saved.": "Gespeichert.",
    "Discard the unsaved changes?": "Nicht gespeicherte Änderungen verwerfen?",
    "Not saved. Please correct the marked fields.": "Nicht gespeichert. Bitte berichtigen Sie die markierten Felder.",
    "These settings take effect when the phone restarts.": "Diese Einstellungen gelten nach einem Neustart des Telefons.",
    "Restart the phone now?": "Telefon jetzt neu starten?",
    "Some settings take effect only after a restart. The phone cannot make or take calls until it is back.": "Manche Einstellungen gelten erst nach einem Neustart. Bis das Telefon wieder bereit ist, sind keine Anrufe möglich.",
    "Your user level may not see this page.": "Ihre Benutzerstufe darf diese Seite nicht sehen.",
    "You have been logged out. Reload the page to log in.": "Sie wurden abgemeldet. Laden Sie die Seite neu, um sich anzumelden.",
    "Caps Lock is on.": "Die Feststelltaste ist aktiv.",

    // Checks
    "This field is required.": "Dieses Feld ist erforderlich.",
    "Enter a whole number from %1 to %2.": "Geben Sie eine ganze Zahl von %1 bis %2 ein.",
    "Enter an IPv4 address such as 192.168.1.20.": "Geben Sie eine IPv4-Adresse wie 192.168.1.20 ein.",
    "Enter an IPv6 address such as 2001:db8::20.": "Geben Sie eine IPv6-Adresse wie 2001:db8::20 ein.",
    "Enter a subnet mask such as 255.255.255.0.": "Geben Sie eine Subnetzmaske wie 255.255.255.0 ein.",
    "Enter a host name or an IP address.": "Geben Sie einen Hostnamen oder eine IP-Adresse ein.",
    "This address is not in the same network as %1.": "Diese Adresse liegt nicht im selben Netzwerk wie %1.",
    "The last address must not come before the first.": "Die letzte Adresse darf nicht vor der ersten liegen.",
    "Enter the whole password.": "Geben Sie das ganze Passwort ein.",
    "Enter a number from %1 to %2.": "Geben Sie eine Zahl von %1 bis %2 ein.",
    "Enter a number above %1.": "Geben Sie eine Zahl über %1 ein.",
    "Enter an address such as https://server.example/folder.": "Geben Sie eine Adresse wie https://server.example/ordner ein.",
    "Enter a multicast address such as 224.0.1.75:5010.": "Geben Sie eine Multicast-Adresse wie 224.0.1.75:5010 ein.",
    "Enter a number or name without spaces.": "Geben Sie eine Nummer oder einen Namen ohne Leerzeichen ein.",
    "Enter exactly 16 characters.": "Geben Sie genau 16 Zeichen ein.",
    "The passwords do not match.": "Die Passwörter stimmen nicht überein.",

    // Waiting for the phone
    "Notice": "Hinweis",
    "Open the page now": "Seite jetzt öffnen",
    "Waiting for the phone: %1 s": "Warten auf das Telefon: %1 s",
    "The phone has not come back yet. Its address may have changed: look at its screen.": "Das Telefon ist noch nicht wieder erreichbar. Vielleicht hat sich seine Adresse geändert: Sehen Sie auf seinem Bildschirm nach.",
    "The phone does not answer. Please try again.": "Das Telefon antwortet nicht. Bitte versuchen Sie es noch einmal.",
    "The phone does not answer. This page continues when it is back.": "Das Telefon antwortet nicht. Diese Seite läuft weiter, sobald es wieder da ist.",
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
    "Offline": "Nicht erreichbar",
    "Version": "Version",
    "Firmware": "Firmware",
    "Hardware": "Hardware",
    "Accounts": "Konten",
    "No.": "Nr.",
    "User name": "Benutzername",
    "Server": "Server",
    "State": "Status",
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
    "Connected modules": "Angeschlossene Module",
    "Module": "Modul",

    // Network
    "The stored password is not shown. Leave the field as it is to keep it.": "Das gespeicherte Passwort wird nicht gezeigt. Lassen Sie das Feld unverändert, um es zu behalten.",

    // Register
    "Account%d": "Konto %d",
    "Auto": "Automatisch",
    "Label": "Beschriftung",
    "Password": "Passwort",
    "Display name": "Anzeigename",
    "The host name or IP address of the server.": "Der Hostname oder die IP-Adresse des Servers.",
    "Port": "Port",
    "Number": "Nummer",

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
    "Forward and DND": "Umleitung und DND",

    // Rings
    "Rings": "Klingeltöne",
    "Play": "Abspielen",
    "Play: %1": "Abspielen: %1",
    "Stop": "Anhalten",

    // Multicast paging
    "Multicast paging": "Durchsagen",

    // Lists that are put in order
    "Use": "Benutzen",
    "Remove": "Entfernen",
    "Move up: %1": "Nach oben: %1",
    "Move down: %1": "Nach unten: %1",
    "%1: %2, %3 of %4": "%1: %2, %3 von %4",

    // Keys
    "Keys": "Tasten",
    "Soft keys": "Display-Tasten",
    "Conference": "Konferenz",
    "Dialling": "Wählen",
    "Incoming call": "Eingehender Anruf",
    "Call Info": "Anrufinformationen",
    "Disp Code": "Bearbeitungscode",
    "Line Selection": "Leitungswahl",

    // Directories
    "Favourites": "Favoriten",
    "Remote phone books": "Entfernte Telefonbücher",
    "Network directories": "Netzverzeichnisse",
    "History": "Anrufliste",
    "Network Calllog": "Anrufliste im Netz",
    "Local Contacts": "Kontakte",
    "Remote Phone Book": "Entfernte Telefonbücher",
    "Network Directories": "Netzverzeichnisse",
    "Remote Phonebook": "Entfernte Telefonbücher",
    "Error:Write remote_phonebook_list.xml error!": "Das Telefon konnte die Telefonbücher nicht speichern.",
    // Call history
    "Call history": "Anrufliste",
    "Error:Item is wrong!": "Dieses Konto gibt es nicht mehr, oder die Angaben sind unvollständig.",

    // Dialling
    "call success": "Das Telefon ruft diese Nummer an.",
    "call failed": "Das Telefon hat nicht gewählt. Entweder gehört Ihr Computer nicht zu den vertrauten Adressen, oder die Nummer ist falsch.",
    "hangup success": "Das Telefon hat aufgelegt.",

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
    "Every key press makes a sound.": "Jeder Tastendruck macht einen Ton.",
    "Send key tone": "Ton der Wähltaste",
    "The key that starts a call makes its own sound.": "Die Taste, die einen Anruf startet, macht einen eigenen Ton.",

    // Bluetooth
    "Bluetooth": "Bluetooth",

    // Call pickup
    "Call pickup": "Rufübernahme",

    // General features
    "General": "Allgemein",
    "Send # unchanged": "# unverändert senden",
    "When off, a dialled # is sent as %23.": "Ausgeschaltet wird ein gewähltes # als %23 gesendet.",
    "SIP": "SIP",
    "RFC 2543 hold": "Halten nach RFC 2543",
    "Puts calls on hold with the address 0.0.0.0, for old systems.": "Hält Gespräche mit der Adresse 0.0.0.0, für alte Anlagen.",
    "Outbound proxy during calls": "Ausgehender Proxy in Gesprächen",
    "Messages during a call go through the outbound proxy too.": "Auch Nachrichten innerhalb eines Gesprächs gehen über den ausgehenden Proxy.",
    "Ring tone after early media": "Freizeichen nach Ansage",
    "A ring tone replaces the announcement when the other phone begins to ring.": "Ein Freizeichen ersetzt die Ansage, wenn das andere Telefon zu klingeln beginnt.",
    "Delete": "Löschen",
    "Upload": "Hochladen",
    "Choose a file first.": "Wählen Sie zuerst eine Datei.",
    "Setup wizard": "Einrichtungsassistent",
    "After a restart, the phone asks who uses it.": "Nach einem Neustart fragt das Telefon, wer es benutzt.",

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
    "A call may be transferred while the other phone still rings.": "Ein Gespräch darf vermittelt werden, während das andere Telefon noch klingelt.",
    "Blind transfer on hanging up": "Blinde Vermittlung beim Auflegen",
    "Hanging up after dialling the number transfers the call.": "Auflegen nach dem Wählen der Nummer vermittelt das Gespräch.",
    "Continue conferences without this phone": "Konferenz ohne dieses Telefon fortsetzen",
    "When this phone hangs up, the other two stay connected.": "Legt dieses Telefon auf, bleiben die beiden anderen verbunden.",

    // Phone lock
    "Phone lock": "Telefonsperre",

    // Area code
    "Area code": "Ortsvorwahl",

    // Tones
    "Custom": "Eigene",

    // Voice
    "Voice": "Sprachqualität",

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
    "Enter account numbers separated by commas, such as 1,2.": "Geben Sie Kontonummern durch Kommas getrennt ein, etwa 1,2.",
    "Enter IP addresses separated by commas, such as 192.168.1.20,192.168.1.21.": "Geben Sie IP-Adressen durch Kommas getrennt ein, etwa 192.168.1.20,192.168.1.21.",
    "Enter IP addresses separated by commas, without spaces, with * for any part, or the word any.": "Geben Sie IP-Adressen durch Kommas getrennt und ohne Leerzeichen ein, mit * für einen beliebigen Teil, oder das Wort any.",
    "Enter an address that begins with http:// or https://, without spaces.": "Geben Sie eine Adresse ohne Leerzeichen ein, die mit http:// oder https:// beginnt.",
    "Enter parts such as 425/480 separated by commas, without spaces.": "Geben Sie Teile wie 425/480 durch Kommas getrennt und ohne Leerzeichen ein.",
    "Enter a filter such as (|(cn=%)(sn=%)).": "Geben Sie einen Filter wie (|(cn=%)(sn=%)) ein.",
    "Enter at least %1.": "Geben Sie mindestens %1 ein.",
    "Enter at most %1.": "Geben Sie höchstens %1 ein.",

    // Contacts
    "Contacts": "Kontakte",
    "ignore": "Nicht importieren",
    "display_name": "Name",
    "office_number": "Büronummer",
    "mobile_number": "Mobilnummer",
    "other_number": "Andere Nummer",
    "line": "Konto",
    "ring": "Klingelton",
    "group_id_name": "Gruppe",
    "default_photo": "Foto",
    "photo_data": "Bild des Fotos",
    "Error:Group already existed!": "Eine Gruppe mit diesem Namen gibt es schon.",
    "Error:Contact already existed!": "Einen Kontakt mit diesem Namen gibt es schon.",
    "Error:Invalid group id!": "Diese Gruppe gibt es nicht.",
    "Error:Group not existed!": "Diese Gruppe gibt es nicht.",
    "Error:Contact not existed!": "Diesen Kontakt gibt es nicht mehr.",
    "Error:Group can not delete!": "Diese Gruppe kann weder geändert noch gelöscht werden.",
    "Error:Contact list is full!": "Das Verzeichnis ist voll.",
    "Error:Black list is full!": "Die Sperrliste ist voll.",
    "Error:Group list is full!": "Das Telefon kann keine weitere Gruppe aufnehmen.",
    "Error:Contact is not local!": "Dieser Kontakt steht nicht im Verzeichnis des Telefons.",
    "Error:Contact is not black!": "Dieser Kontakt steht nicht in der Sperrliste.",
    "Error:Contact is asyncing!": "Das Verzeichnis wird gerade abgeglichen. Bitte versuchen Sie es gleich noch einmal.",
    "Error:Network error!": "Das Netzwerk antwortet nicht. Bitte versuchen Sie es noch einmal.",
    "Error:Photo name error!": "Das Telefon nimmt dieses Foto nicht an.",
    "Error:Other error!": "Das Telefon konnte das nicht ausführen. Laden Sie die Seite neu und versuchen Sie es noch einmal.",
    "Error:Invalid file!": "Die Datei ist beschädigt oder enthält keine Kontakte.",
    "Error:Duplicate group!": "Die Datei enthält zwei Gruppen gleichen Namens.",
    "Error:Duplcate contact!": "Die Datei enthält zwei Kontakte gleichen Namens.",
    "Error:Too many group!": "Die Datei bringt mehr Gruppen, als das Telefon aufnehmen kann.",
    "Error:Too many local contact!": "Die Datei bringt mehr Kontakte, als das Telefon aufnehmen kann.",
    "Error:Too many blacklist!": "Die Datei bringt mehr Kontakte, als die Sperrliste aufnehmen kann.",
    "Error:Invalid path!": "Das Telefon hat die Datei nicht gefunden.",
    "Error:Group empty!": "Eine Gruppe in der Datei hat keinen Namen.",
    "Error:Contact name empty!": "Ein Kontakt in der Datei hat keinen Namen.",
    "Error:No default group!": "In der Datei fehlt die Gruppe aller Kontakte.",
    "Error:No contact group!": "Ein Kontakt in der Datei gehört zu keiner Gruppe.",
    "Error:Upload error!": "Das Telefon konnte die Datei nicht importieren.",
    "Error:Export contact file error!": "Das Telefon konnte sein Verzeichnis nicht exportieren. Bitte versuchen Sie es noch einmal.",
    "Error:Import contact file error!": "Das Telefon hat keine Datei erhalten. Bitte versuchen Sie es noch einmal.",
    "Get CSVFile data error!": "Das Telefon hat keine lesbare CSV-Datei erhalten.",
    "Fail to upload photo ! [Can not compress the picture]": "Das Telefon kann dieses Bild nicht verwenden. Wählen Sie ein JPEG-, PNG- oder BMP-Bild bis 5 MB.",
    "Fail to upload photo ! [The Resolution of the picture is too large]": "Das Bild hat zu viele Bildpunkte für das Telefon.",
  },
};
