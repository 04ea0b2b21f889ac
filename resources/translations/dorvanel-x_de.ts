<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>MainMenu</name>
    <message>
        <source>Dorvanel X</source>
        <translation>Dorvanel X</translation>
    </message>
    <message>
        <source>Ready.</source>
        <translation>Bereit.</translation>
    </message>
    <message>
        <source>S&amp;top</source>
        <translation>A&amp;nhalten</translation>
    </message>
    <message>
        <source>Shredding progress</source>
        <translation>Fortschritt des Schredderns</translation>
    </message>
    <message>
        <source>What went wrong</source>
        <translation>Was schiefging</translation>
    </message>
    <message>
        <source>Detai&amp;ls…</source>
        <translation>Detai&amp;ls …</translation>
    </message>
    <message>
        <source>What could not be done, and why</source>
        <translation>Was nicht möglich war, und warum</translation>
    </message>
    <message>
        <source>Dis&amp;miss</source>
        <translation>Aus&amp;blenden</translation>
    </message>
    <message>
        <source>Takes this failure away; an older one comes up</source>
        <translation>Blendet diesen Fehler aus; ein älterer kommt zum Vorschein</translation>
    </message>
    <message>
        <source>Ap&amp;plications</source>
        <translation>&amp;Anwendungen</translation>
    </message>
    <message>
        <source>Applications on this computer</source>
        <translation>Anwendungen auf diesem Rechner</translation>
    </message>
    <message>
        <source>Safari</source>
        <translation>Safari</translation>
    </message>
    <message>
        <source>Internet Explorer</source>
        <translation>Internet Explorer</translation>
    </message>
    <message>
        <source>Mozilla</source>
        <translation>Mozilla</translation>
    </message>
    <message>
        <source>Netscape</source>
        <translation>Netscape</translation>
    </message>
    <message>
        <source>iCab</source>
        <translation>iCab</translation>
    </message>
    <message>
        <source>OmniWeb</source>
        <translation>OmniWeb</translation>
    </message>
    <message>
        <source>Opera</source>
        <translation>Opera</translation>
    </message>
    <message>
        <source>Camino</source>
        <translation>Camino</translation>
    </message>
    <message>
        <source>Firefox</source>
        <translation>Firefox</translation>
    </message>
    <message>
        <source>Apple Mail</source>
        <translation>Apple Mail</translation>
    </message>
    <message>
        <source>Eudora</source>
        <translation>Eudora</translation>
    </message>
    <message>
        <source>Mailsmith</source>
        <translation>Mailsmith</translation>
    </message>
    <message>
        <source>&amp;Last Runs</source>
        <translation>Let&amp;zte Läufe</translation>
    </message>
    <message>
        <source>Previe&amp;w…</source>
        <translation>&amp;Vorschau …</translation>
    </message>
    <message>
        <source>Shows what would be shredded, and touches nothing</source>
        <translation>Zeigt, was geschreddert würde, und rührt nichts an</translation>
    </message>
    <message>
        <source>Shreds the traces that are chosen in the preferences</source>
        <translation>Schreddert die Spuren, die in den Einstellungen ausgewählt sind</translation>
    </message>
    <message>
        <source>Shred &amp;Files…</source>
        <translation>Dat&amp;eien schreddern …</translation>
    </message>
    <message>
        <source>Lets you choose files and shreds them at once</source>
        <translation>Lässt Dateien auswählen und schreddert sie sofort</translation>
    </message>
    <message>
        <source>Pr&amp;eferences…</source>
        <translation>Einstellun&amp;gen …</translation>
    </message>
    <message>
        <source>What is shredded, how, and when</source>
        <translation>Was wie und wann geschreddert wird</translation>
    </message>
    <message>
        <source>&amp;Dorvanel</source>
        <translation>&amp;Dorvanel</translation>
    </message>
    <message>
        <source>F&amp;ile</source>
        <translation>Da&amp;tei</translation>
    </message>
    <message>
        <source>Sh&amp;red</source>
        <translation>S&amp;chreddern</translation>
    </message>
    <message>
        <source>&amp;Profiles</source>
        <translation>&amp;Profile</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About Dorvanel X</source>
        <translation>&amp;Über Dorvanel X</translation>
    </message>
    <message>
        <source>&amp;Preferences…</source>
        <translation>&amp;Einstellungen …</translation>
    </message>
    <message>
        <source>Ctrl+,</source>
        <translation>Ctrl+,</translation>
    </message>
    <message>
        <source>&amp;Hide Dorvanel</source>
        <translation>Dorvanel &amp;ausblenden</translation>
    </message>
    <message>
        <source>Ctrl+H</source>
        <translation>Ctrl+H</translation>
    </message>
    <message>
        <source>&amp;Quit Dorvanel</source>
        <translation>Dorvanel &amp;beenden</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>&amp;Preview…</source>
        <translation>&amp;Vorschau …</translation>
    </message>
    <message>
        <source>Ctrl+P</source>
        <translation>Ctrl+P</translation>
    </message>
    <message>
        <source>Shred &amp;Trash…</source>
        <translation>&amp;Papierkorb schreddern …</translation>
    </message>
    <message>
        <source>Show Activity &amp;Log</source>
        <translation>&amp;Aktivitätsprotokoll anzeigen</translation>
    </message>
    <message>
        <source>Dorvanel X &amp;Help</source>
        <translation>&amp;Hilfe zu Dorvanel X</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
    <message>
        <source>&amp;Shred Files…</source>
        <translation>&amp;Dateien schreddern …</translation>
    </message>
    <message>
        <source>Ctrl+O</source>
        <translation>Ctrl+O</translation>
    </message>
    <message>
        <source>Ctrl+Return</source>
        <translation>Ctrl+Return</translation>
    </message>
    <message>
        <source>&amp;E-mail Support</source>
        <translation>&amp;E-Mail an den Support</translation>
    </message>
    <message>
        <source>Frequently Asked &amp;Questions</source>
        <translation>Häufig gestellte &amp;Fragen</translation>
    </message>
    <message>
        <source>&amp;Downloads</source>
        <translation>&amp;Downloads</translation>
    </message>
    <message>
        <source>Dorvanel Preferences</source>
        <translation>Einstellungen von Dorvanel</translation>
    </message>
    <message>
        <source>Shred in web browsers</source>
        <translation>In Webbrowsern schreddern</translation>
    </message>
    <message>
        <source>&amp;Caches</source>
        <translation>&amp;Zwischenspeicher</translation>
    </message>
    <message>
        <source>Copies of the pages you have visited</source>
        <translation>Kopien der besuchten Seiten</translation>
    </message>
    <message>
        <source>&amp;Histories</source>
        <translation>&amp;Verläufe</translation>
    </message>
    <message>
        <source>Lists of the pages you have visited</source>
        <translation>Listen der besuchten Seiten</translation>
    </message>
    <message>
        <source>&amp;Download caches and lists</source>
        <translation>&amp;Download-Speicher und -Listen</translation>
    </message>
    <message>
        <source>What you have downloaded, in every browser that keeps a list</source>
        <translation>Was heruntergeladen wurde, in jedem Browser, der eine Liste führt</translation>
    </message>
    <message>
        <source>Page &amp;icons</source>
        <translation>Seiten&amp;symbole</translation>
    </message>
    <message>
        <source>The icons of the pages you have visited</source>
        <translation>Die Symbole der besuchten Seiten</translation>
    </message>
    <message>
        <source>Shred in mail programs</source>
        <translation>In E-Mail-Programmen schreddern</translation>
    </message>
    <message>
        <source>&amp;Trash mailboxes</source>
        <translation>&amp;Papierkorb-Postfächer</translation>
    </message>
    <message>
        <source>Messages that you have thrown away</source>
        <translation>Nachrichten, die weggeworfen wurden</translation>
    </message>
    <message>
        <source>&amp;Junk mailboxes</source>
        <translation>&amp;Junk-Postfächer</translation>
    </message>
    <message>
        <source>The junk mailboxes of Apple Mail and Eudora</source>
        <translation>Die Junk-Postfächer von Apple Mail und Eudora</translation>
    </message>
    <message>
        <source>Apple &amp;Mail cache</source>
        <translation>Zwischenspeicher von Apple &amp;Mail</translation>
    </message>
    <message>
        <source>What Apple Mail has kept of its servers</source>
        <translation>Was Apple Mail von seinen Servern aufgehoben hat</translation>
    </message>
    <message>
        <source>Mailsmith sp&amp;am mailbox</source>
        <translation>Sp&amp;am-Postfach von Mailsmith</translation>
    </message>
    <message>
        <source>Puts a copy of the template “(dorvanelx)” in place of “(spam)”</source>
        <translation>Setzt eine Kopie der Vorlage „(dorvanelx)“ an die Stelle von „(spam)“</translation>
    </message>
    <message>
        <source>A copy of your mailbox “(dorvanelx)” takes the place of “(spam)”.</source>
        <translation>Eine Kopie von „(dorvanelx)“ tritt an die Stelle von „(spam)“.</translation>
    </message>
    <message>
        <source>Every message in “(spam)” is shredded.</source>
        <translation>Jede Nachricht in „(spam)“ wird geschreddert.</translation>
    </message>
    <message>
        <source>Make “(dorvanelx)” in Mailsmith first, and leave it empty.</source>
        <translation>Zuvor in Mailsmith „(dorvanelx)“ anlegen und leer lassen.</translation>
    </message>
    <message>
        <source>At other times</source>
        <translation>Zu anderen Zeiten</translation>
    </message>
    <message>
        <source>The &amp;QuickTime cache, when the session ends</source>
        <translation>Zwischenspeicher von &amp;QuickTime am Ende der Sitzung</translation>
    </message>
    <message>
        <source>Only with the commands that end with a logout, shutdown or restart</source>
        <translation>Nur bei den Befehlen, die mit Abmelden, Herunterfahren oder Neustart enden</translation>
    </message>
    <message>
        <source>What the desktop &amp;remembers of shredded files</source>
        <translation>Listen und Vo&amp;rschaubilder geschredderter Dateien</translation>
    </message>
    <message>
        <source>Shreds with the files that you hand over their thumbnails and their entries in the lists of recent documents</source>
        <translation>Schreddert mit den übergebenen Dateien ihre Vorschaubilder und ihre Einträge in den Listen zuletzt benutzter Dokumente</translation>
    </message>
    <message>
        <source>How to overwrite</source>
        <translation>Wie überschrieben wird</translation>
    </message>
    <message>
        <source>&amp;Passes:</source>
        <translation>D&amp;urchgänge:</translation>
    </message>
    <message>
        <source>How many times each block of a file is overwritten</source>
        <translation>Wie oft jeder Block einer Datei überschrieben wird</translation>
    </message>
    <message>
        <source>1 to 4, at random</source>
        <translation>1 bis 4, zufällig</translation>
    </message>
    <message>
        <source>1 pass</source>
        <translation>1 Durchgang</translation>
    </message>
    <message>
        <source>2 passes</source>
        <translation>2 Durchgänge</translation>
    </message>
    <message>
        <source>3 passes</source>
        <translation>3 Durchgänge</translation>
    </message>
    <message>
        <source>4 passes</source>
        <translation>4 Durchgänge</translation>
    </message>
    <message>
        <source>5 passes</source>
        <translation>5 Durchgänge</translation>
    </message>
    <message>
        <source>6 passes</source>
        <translation>6 Durchgänge</translation>
    </message>
    <message>
        <source>7 passes</source>
        <translation>7 Durchgänge</translation>
    </message>
    <message>
        <source>8 passes</source>
        <translation>8 Durchgänge</translation>
    </message>
    <message>
        <source>9 passes</source>
        <translation>9 Durchgänge</translation>
    </message>
    <message>
        <source>10 passes</source>
        <translation>10 Durchgänge</translation>
    </message>
    <message>
        <source>15 passes</source>
        <translation>15 Durchgänge</translation>
    </message>
    <message>
        <source>20 passes</source>
        <translation>20 Durchgänge</translation>
    </message>
    <message>
        <source>25 passes</source>
        <translation>25 Durchgänge</translation>
    </message>
    <message>
        <source>30 passes</source>
        <translation>30 Durchgänge</translation>
    </message>
    <message>
        <source>35 passes</source>
        <translation>35 Durchgänge</translation>
    </message>
    <message>
        <source>Patt&amp;ern:</source>
        <translation>Must&amp;er:</translation>
    </message>
    <message>
        <source>What files are overwritten with</source>
        <translation>Womit Dateien überschrieben werden</translation>
    </message>
    <message>
        <source>Random data (standard)</source>
        <translation>Zufallsdaten (Standard)</translation>
    </message>
    <message>
        <source>Random data</source>
        <translation>Zufallsdaten</translation>
    </message>
    <message>
        <source>Zeros (0x00)</source>
        <translation>Nullen (0x00)</translation>
    </message>
    <message>
        <source>Ones (0xFF)</source>
        <translation>Einsen (0xFF)</translation>
    </message>
    <message>
        <source>Alternating bits (0x55)</source>
        <translation>Wechselnde Bits (0x55)</translation>
    </message>
    <message>
        <source>Alternating bits (0xAA)</source>
        <translation>Wechselnde Bits (0xAA)</translation>
    </message>
    <message>
        <source>DoD &amp;sequence</source>
        <translation>D&amp;oD-Folge</translation>
    </message>
    <message>
        <source>At least three passes; the last three are 0x55, 0xAA and random data</source>
        <translation>Mindestens drei Durchgänge; die letzten drei sind 0x55, 0xAA und Zufallsdaten</translation>
    </message>
    <message>
        <source>&amp;NSA sequence</source>
        <translation>&amp;NSA-Folge</translation>
    </message>
    <message>
        <source>At least three passes; the last three are random data, random data and zeros</source>
        <translation>Mindestens drei Durchgänge; die letzten drei sind Zufallsdaten, Zufallsdaten und Nullen</translation>
    </message>
    <message>
        <source>&amp;Browser Watch</source>
        <translation>&amp;Browser Watch</translation>
    </message>
    <message>
        <source>Shows what is to be shredded and waits for your answer</source>
        <translation>Zeigt, was geschreddert werden soll, und wartet auf die Antwort</translation>
    </message>
    <message>
        <source>Keep an activity &amp;log</source>
        <translation>Aktivitätsprotoko&amp;ll führen</translation>
    </message>
    <message>
        <source>Writes what a run takes and leaves to Dorvanel X Log.txt in Library/Logs</source>
        <translation>Schreibt, was ein Lauf entfernt und stehen lässt, in Dorvanel X Log.txt in Library/Logs</translation>
    </message>
    <message>
        <source>Hide Dorvanel after a r&amp;un</source>
        <translation>Dorvanel na&amp;ch einem Lauf ausblenden</translation>
    </message>
    <message>
        <source>Puts the window away when a run has ended</source>
        <translation>Räumt das Fenster weg, wenn ein Lauf beendet ist</translation>
    </message>
    <message>
        <source>Applications to watch and to shred</source>
        <translation>Anwendungen, die beobachtet und geschreddert werden</translation>
    </message>
    <message>
        <source>Whether Safari is watched and its traces may be shredded</source>
        <translation>Ob Safari beobachtet wird und seine Spuren geschreddert werden dürfen</translation>
    </message>
    <message>
        <source>Whether Internet Explorer is watched and its traces may be shredded</source>
        <translation>Ob Internet Explorer beobachtet wird und seine Spuren geschreddert werden dürfen</translation>
    </message>
    <message>
        <source>Whether Mozilla is watched and its traces may be shredded</source>
        <translation>Ob Mozilla beobachtet wird und seine Spuren geschreddert werden dürfen</translation>
    </message>
    <message>
        <source>Whether Netscape is watched and its traces may be shredded</source>
        <translation>Ob Netscape beobachtet wird und seine Spuren geschreddert werden dürfen</translation>
    </message>
    <message>
        <source>Whether iCab is watched and its traces may be shredded</source>
        <translation>Ob iCab beobachtet wird und seine Spuren geschreddert werden dürfen</translation>
    </message>
    <message>
        <source>Omniweb</source>
        <translation>Omniweb</translation>
    </message>
    <message>
        <source>Whether Omniweb is watched and its traces may be shredded</source>
        <translation>Ob Omniweb beobachtet wird und seine Spuren geschreddert werden dürfen</translation>
    </message>
    <message>
        <source>Whether Opera is watched and its traces may be shredded</source>
        <translation>Ob Opera beobachtet wird und seine Spuren geschreddert werden dürfen</translation>
    </message>
    <message>
        <source>Whether Camino is watched and its traces may be shredded</source>
        <translation>Ob Camino beobachtet wird und seine Spuren geschreddert werden dürfen</translation>
    </message>
    <message>
        <source>Whether Firefox is watched and its traces may be shredded</source>
        <translation>Ob Firefox beobachtet wird und seine Spuren geschreddert werden dürfen</translation>
    </message>
    <message>
        <source>Whether Apple Mail is watched and its traces may be shredded</source>
        <translation>Ob Apple Mail beobachtet wird und seine Spuren geschreddert werden dürfen</translation>
    </message>
    <message>
        <source>Whether Eudora is watched and its traces may be shredded</source>
        <translation>Ob Eudora beobachtet wird und seine Spuren geschreddert werden dürfen</translation>
    </message>
    <message>
        <source>Whether Mailsmith is watched and its traces may be shredded</source>
        <translation>Ob Mailsmith beobachtet wird und seine Spuren geschreddert werden dürfen</translation>
    </message>
    <message>
        <source>&amp;Factory Settings</source>
        <translation>Vore&amp;instellungen</translation>
    </message>
    <message>
        <source>Sets everything but the applications as it was when Dorvanel was new</source>
        <translation>Stellt alles außer den Anwendungen so ein, wie es war, als Dorvanel neu war</translation>
    </message>
    <message>
        <source>Re&amp;vert</source>
        <translation>Zurückse&amp;tzen</translation>
    </message>
    <message>
        <source>Cl&amp;ose</source>
        <translation>Sc&amp;hließen</translation>
    </message>
    <message>
        <source>Closes the panel; every change is saved already</source>
        <translation>Schließt das Fenster; jede Änderung ist bereits gespeichert</translation>
    </message>
    <message>
        <source>First steps</source>
        <translation>Erste Schritte</translation>
    </message>
    <message>
        <source>“Shred Traces” overwrites and removes what browsers and mail programs have left, as chosen in the preferences; “Shred Files…” does it to files that you pick. There is no way back.</source>
        <translation>„Spuren schreddern“ überschreibt und entfernt, was Browser und E-Mail-Programme hinterlassen haben, wie in den Einstellungen ausgewählt; „Dateien schreddern …“ tut dies mit ausgewählten Dateien. Ein Zurück gibt es nicht.</translation>
    </message>
    <message>
        <source>What Overwriting &amp;Cannot Promise</source>
        <translation>Grenzen des Überschre&amp;ibens</translation>
    </message>
    <message>
        <source>&amp;Got It</source>
        <translation>Ve&amp;rstanden</translation>
    </message>
    <message>
        <source>Applications of former years</source>
        <translation>Anwendungen früherer Jahre</translation>
    </message>
    <message>
        <source>&amp;Shred Traces</source>
        <translation>&amp;Spuren schreddern</translation>
    </message>
    <message>
        <source>Shred Traces &amp;and</source>
        <translation>Sp&amp;uren schreddern und</translation>
    </message>
    <message>
        <source>Shreds the traces, then logs out, shuts down or restarts</source>
        <translation>Schreddert die Spuren; danach wird abgemeldet, heruntergefahren oder neu gestartet</translation>
    </message>
    <message>
        <source>&amp;First Steps</source>
        <translation>Erste &amp;Schritte</translation>
    </message>
    <message>
        <source>Shred Trac&amp;es</source>
        <translation>&amp;Spuren schreddern</translation>
    </message>
    <message>
        <source>Shred Traces and &amp;Log Out</source>
        <translation>Spuren schreddern und ab&amp;melden</translation>
    </message>
    <message>
        <source>Shred Traces and Shut &amp;Down</source>
        <translation>Spuren schreddern und &amp;herunterfahren</translation>
    </message>
    <message>
        <source>Shred Traces and &amp;Restart</source>
        <translation>Spuren schreddern und neu sta&amp;rten</translation>
    </message>
    <message>
        <source>Search the preferences</source>
        <translation>Einstellungen durchsuchen</translation>
    </message>
    <message>
        <source>Type a word to find a preference on any page; Escape clears it</source>
        <translation>Ein Wort eingeben, um eine Einstellung auf allen Seiten zu finden; Esc löscht es</translation>
    </message>
    <message>
        <source>Preferences found</source>
        <translation>Gefundene Einstellungen</translation>
    </message>
    <message>
        <source>Return shows the preference on its page</source>
        <translation>Die Eingabetaste zeigt die Einstellung auf ihrer Seite</translation>
    </message>
    <message>
        <source>Pages of the preferences</source>
        <translation>Seiten der Einstellungen</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Was</translation>
    </message>
    <message>
        <source>How</source>
        <translation>Wie</translation>
    </message>
    <message>
        <source>Watching</source>
        <translation>Beobachten</translation>
    </message>
    <message>
        <source>Runs</source>
        <translation>Läufe</translation>
    </message>
    <message>
        <source>Shreds the traces when an enabled application has quit</source>
        <translation>Schreddert die Spuren, sobald eine aktivierte Anwendung beendet wurde</translation>
    </message>
    <message>
        <source>As&amp;k before traces are shredded</source>
        <translation>Vor dem Schreddern von Spuren &amp;fragen</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Anwendungen</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Brings back the settings as they were before</source>
        <translation>Stellt die vorherigen Einstellungen wieder her</translation>
    </message>
    <message>
        <source>Brings everything back as it was when this panel was opened</source>
        <translation>Stellt alles so wieder her, wie es beim Öffnen dieses Fensters war</translation>
    </message>
</context>
<context>
    <name>MyDocument</name>
    <message>
        <source>Dorvanel</source>
        <translation>Dorvanel</translation>
    </message>
    <message>
        <source>These were handed to Dorvanel. They have not been shredded.</source>
        <translation>Dies wurde Dorvanel übergeben. Geschreddert wurde es nicht.</translation>
    </message>
    <message>
        <source>Files handed over</source>
        <translation>Übergebene Dateien</translation>
    </message>
    <message>
        <source>Shred… asks first: about the selected ones, or about all.</source>
        <translation>„Schreddern …“ fragt zuerst: nach den ausgewählten oder nach allen.</translation>
    </message>
    <message>
        <source>&amp;Shred…</source>
        <translation>&amp;Schreddern …</translation>
    </message>
    <message>
        <source>Asks before the selected ones, or all, are shredded</source>
        <translation>Fragt, bevor die ausgewählten oder alle geschreddert werden</translation>
    </message>
</context>
<context>
    <name>Words</name>
    <message>
        <source>Ready.</source>
        <translation>Bereit.</translation>
    </message>
    <message>
        <source>Dorvanel quits when shredding has ended.</source>
        <translation>Dorvanel wird nach dem Schreddern beendet.</translation>
    </message>
    <message>
        <source>Waiting for your answer…</source>
        <translation>Warten auf eine Antwort …</translation>
    </message>
    <message>
        <source>Waiting for browsers and mail programs to quit…</source>
        <translation>Warten, bis Browser und E-Mail-Programme beendet sind …</translation>
    </message>
    <message>
        <source>Looking for what is to be shredded…</source>
        <translation>Suchen, was zu schreddern ist …</translation>
    </message>
    <message>
        <source>Stopping after the block at hand…</source>
        <translation>Nach dem aktuellen Block wird angehalten …</translation>
    </message>
    <message>
        <source>Shredding…</source>
        <translation>Schreddern …</translation>
    </message>
    <message>
        <source>Cancelled. Nothing was shredded.</source>
        <translation>Abgebrochen. Es wurde nichts geschreddert.</translation>
    </message>
    <message>
        <source>Given up. Nothing was shredded.</source>
        <translation>Aufgegeben. Es wurde nichts geschreddert.</translation>
    </message>
    <message>
        <source>Not now: a run is in progress</source>
        <translation>Jetzt nicht: Ein Lauf ist im Gange</translation>
    </message>
    <message>
        <source>Not now: another question waits for your answer</source>
        <translation>Jetzt nicht: Eine andere Frage wartet auf Antwort</translation>
    </message>
    <message>
        <source>Not started. Nothing was shredded.</source>
        <translation>Nicht begonnen. Es wurde nichts geschreddert.</translation>
    </message>
    <message>
        <source>Only files and folders of this computer can be shredded.</source>
        <translation>Nur Dateien und Ordner dieses Rechners können geschreddert werden.</translation>
    </message>
    <message>
        <source>Nothing starts by itself: Browser Watch is off in the preferences.</source>
        <translation>Nichts beginnt von selbst: Browser Watch ist in den Einstellungen ausgeschaltet.</translation>
    </message>
    <message>
        <source>One thing starts by itself, and without a question: Browser Watch is on, so when an enabled browser or mail program quits, traces are shredded.</source>
        <translation>Eines beginnt von selbst und ohne Rückfrage: Browser Watch ist eingeschaltet; sobald ein aktivierter Browser oder ein aktiviertes E-Mail-Programm beendet wird, werden Spuren geschreddert.</translation>
    </message>
    <message>
        <source>One thing starts by itself: Browser Watch is on, so when an enabled browser or mail program quits, traces are to be shredded; you are asked first.</source>
        <translation>Eines beginnt von selbst: Browser Watch ist eingeschaltet; sobald ein aktivierter Browser oder ein aktiviertes E-Mail-Programm beendet wird, sollen Spuren geschreddert werden; zuvor wird gefragt.</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>This is what “Shred Traces” would take. Nothing has been touched.</source>
        <translation>Dies würde „Spuren schreddern“ entfernen. Noch wurde nichts angerührt.</translation>
    </message>
    <message>
        <source>There is nothing to shred now.</source>
        <translation>Es gibt zurzeit nichts zu schreddern.</translation>
    </message>
    <message>
        <source>Shred Trash</source>
        <translation>Papierkorb schreddern</translation>
    </message>
    <message>
        <source>This is in the trash. Once it is shredded there is no way back.</source>
        <translation>Dies liegt im Papierkorb. Ist es geschreddert, gibt es kein Zurück.</translation>
    </message>
    <message>
        <source>The trash is empty.</source>
        <translation>Der Papierkorb ist leer.</translation>
    </message>
    <message>
        <source>“Factory Settings” in the preferences sets the file aside and begins again.</source>
        <translation>„Voreinstellungen“ in den Einstellungen legt die Datei beiseite und beginnt von vorn.</translation>
    </message>
    <message numerus="yes">
        <source>%n holding folder(s) of an unfinished shredding (is|are) left.</source>
        <translation>
            <numerusform>%n Zwischenordner eines unvollendeten Schredderns ist übrig.</numerusform>
            <numerusform>%n Zwischenordner eines unvollendeten Schredderns sind übrig.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>“dorvanel recover” in a terminal finishes (it|them).</source>
        <translation>
            <numerusform>„dorvanel recover“ in einem Terminal bringt ihn zu Ende.</numerusform>
            <numerusform>„dorvanel recover“ in einem Terminal bringt sie zu Ende.</numerusform>
        </translation>
    </message>
    <message>
        <source>Not started: another question waits for your answer.</source>
        <translation>Nicht begonnen: Eine andere Frage wartet auf Antwort.</translation>
    </message>
    <message>
        <source>“%1” %2</source>
        <translation>„%1“ %2</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>und %n weiteres</numerusform>
            <numerusform>und %n weitere</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing was shredded.</source>
        <translation>Es wurde nichts geschreddert.</translation>
    </message>
    <message>
        <source>Nothing was shredded: %1</source>
        <translation>Es wurde nichts geschreddert: %1</translation>
    </message>
    <message>
        <source>Shred Dropped Items</source>
        <translation>Abgelegte Objekte schreddern</translation>
    </message>
    <message>
        <source>Shred What Is Left</source>
        <translation>Verbliebenes schreddern</translation>
    </message>
    <message>
        <source>at work</source>
        <translation>bei der Arbeit</translation>
    </message>
    <message numerus="yes">
        <source>%Ln run(s) failed</source>
        <translation>
            <numerusform>%Ln Lauf fehlgeschlagen</numerusform>
            <numerusform>%Ln Läufe fehlgeschlagen</numerusform>
        </translation>
    </message>
    <message>
        <source>Browser Watch is on</source>
        <translation>Browser Watch ist eingeschaltet</translation>
    </message>
    <message>
        <source>ready</source>
        <translation>bereit</translation>
    </message>
    <message>
        <source>The preferences could not be saved.</source>
        <translation>Die Einstellungen konnten nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>failure</comment>
        <extracomment>%1: a time of day, %2: what went wrong</extracomment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>(One older failure is in the details.)</source>
        <translation>(Ein älterer Fehler steht in den Details.)</translation>
    </message>
    <message numerus="yes">
        <source>(%Ln older failures are in the details.)</source>
        <translation>
            <numerusform>(%Ln älterer Fehler steht in den Details.)</numerusform>
            <numerusform>(%Ln ältere Fehler stehen in den Details.)</numerusform>
        </translation>
    </message>
    <message>
        <source>Dorvanel X</source>
        <extracomment>The tip of the icon in the status area; %1: the name of the program, %2: its state</extracomment>
        <translation>Dorvanel X</translation>
    </message>
    <message>
        <source>These were handed to Dorvanel. They have not been shredded.</source>
        <translation>Dies wurde Dorvanel übergeben. Geschreddert wurde es nicht.</translation>
    </message>
    <message>
        <source>These were handed to Dorvanel. Nothing is there by these names.</source>
        <translation>Dies wurde Dorvanel übergeben. Unter diesen Namen ist nichts vorhanden.</translation>
    </message>
    <message>
        <source>These were handed to Dorvanel. Those that are there have not been shredded.</source>
        <translation>Dies wurde Dorvanel übergeben. Was davon da ist, wurde nicht geschreddert.</translation>
    </message>
    <message numerus="yes">
        <source>%n (pass|passes) (stored: %1)</source>
        <translation>
            <numerusform>%n Durchgang (gespeichert: %1)</numerusform>
            <numerusform>%n Durchgänge (gespeichert: %1)</numerusform>
        </translation>
    </message>
    <message>
        <source>As used last, or zeros (stored: %1)</source>
        <translation>Wie zuletzt benutzt oder Nullen (gespeichert: %1)</translation>
    </message>
    <message>
        <source>There was nothing to shred.</source>
        <translation>Es gab nichts zu schreddern.</translation>
    </message>
    <message numerus="yes">
        <source>Shredded: %Ln file(s), %1 overwritten.</source>
        <translation>
            <numerusform>Geschreddert: %Ln Datei, %1 überschrieben.</numerusform>
            <numerusform>Geschreddert: %Ln Dateien, %1 überschrieben.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Verified: %Ln file(s).</source>
        <translation>
            <numerusform>Geprüft: %Ln Datei.</numerusform>
            <numerusform>Geprüft: %Ln Dateien.</numerusform>
        </translation>
    </message>
    <message>
        <source>Cleaned: %1, %2 removed.</source>
        <extracomment>%1: &quot;3 files&quot;, %2: &quot;120 rows&quot;</extracomment>
        <translation>Bereinigt: %1, %2 entfernt.</translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s)</source>
        <translation>
            <numerusform>%Ln Datei</numerusform>
            <numerusform>%Ln Dateien</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln row(s)</source>
        <translation>
            <numerusform>%Ln Zeile</numerusform>
            <numerusform>%Ln Zeilen</numerusform>
        </translation>
    </message>
    <message>
        <source>Left alone, as running: %1.</source>
        <translation>Nicht angerührt, da in Betrieb: %1.</translation>
    </message>
    <message numerus="yes">
        <source>%n item(s) that came after the preview (is|are) left for the next run.</source>
        <translation>
            <numerusform>%n Objekt, das nach der Vorschau hinzukam, bleibt für den nächsten Lauf.</numerusform>
            <numerusform>%n Objekte, die nach der Vorschau hinzukamen, bleiben für den nächsten Lauf.</numerusform>
        </translation>
    </message>
    <message>
        <source>clean</source>
        <translation>bereinigt</translation>
    </message>
    <message>
        <source>follow</source>
        <translation>verfolgt</translation>
    </message>
    <message>
        <source>look into</source>
        <translation>durchsucht</translation>
    </message>
    <message>
        <source>look for mentions</source>
        <translation>auf Erwähnungen durchsucht</translation>
    </message>
    <message>
        <source>find</source>
        <translation>gefunden</translation>
    </message>
    <message>
        <source>flush</source>
        <translation>auf das Medium geschrieben</translation>
    </message>
    <message>
        <source>list</source>
        <translation>aufgelistet</translation>
    </message>
    <message>
        <source>look at</source>
        <translation>untersucht</translation>
    </message>
    <message>
        <source>move</source>
        <translation>verschoben</translation>
    </message>
    <message>
        <source>open</source>
        <translation>geöffnet</translation>
    </message>
    <message>
        <source>read</source>
        <translation>gelesen</translation>
    </message>
    <message>
        <source>remove</source>
        <translation>entfernt</translation>
    </message>
    <message>
        <source>rename</source>
        <translation>umbenannt</translation>
    </message>
    <message>
        <source>shred</source>
        <translation>geschreddert</translation>
    </message>
    <message>
        <source>verify</source>
        <translation>geprüft</translation>
    </message>
    <message>
        <source>write</source>
        <translation>geschrieben</translation>
    </message>
    <message>
        <source>Nothing was selected to shred.</source>
        <translation>Es war nichts zum Schreddern ausgewählt.</translation>
    </message>
    <message numerus="yes">
        <source>%Ln item(s) (is|are) still there.</source>
        <translation>
            <numerusform>%Ln Objekt ist noch da.</numerusform>
            <numerusform>%Ln Objekte sind noch da.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) not wholly overwritten.</source>
        <translation>
            <numerusform>%Ln Datei nicht vollständig überschrieben.</numerusform>
            <numerusform>%Ln Dateien nicht vollständig überschrieben.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) read back otherwise or not at all.</source>
        <translation>
            <numerusform>%Ln Datei anders oder gar nicht zurückgelesen.</numerusform>
            <numerusform>%Ln Dateien anders oder gar nicht zurückgelesen.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln item(s) vanished before being shredded.</source>
        <translation>
            <numerusform>%Ln Objekt verschwand, bevor es geschreddert wurde.</numerusform>
            <numerusform>%Ln Objekte verschwanden, bevor sie geschreddert wurden.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) perhaps not on the medium yet.</source>
        <translation>
            <numerusform>%Ln Datei vielleicht noch nicht auf dem Medium.</numerusform>
            <numerusform>%Ln Dateien vielleicht noch nicht auf dem Medium.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln place(s) could not be cleaned.</source>
        <translation>
            <numerusform>%Ln Ort konnte nicht bereinigt werden.</numerusform>
            <numerusform>%Ln Orte konnten nicht bereinigt werden.</numerusform>
        </translation>
    </message>
    <message>
        <source>Shredding ended early.</source>
        <translation>Das Schreddern endete vorzeitig.</translation>
    </message>
    <message>
        <source>Something did not go as it should.</source>
        <translation>Etwas verlief nicht wie vorgesehen.</translation>
    </message>
    <message>
        <source>What runs could not be listed: all applications were left alone.</source>
        <translation>Laufende Programme konnten nicht aufgelistet werden: Alle Anwendungen blieben unangetastet.</translation>
    </message>
    <message>
        <source>Not started: Dorvanel is about to quit.</source>
        <translation>Nicht begonnen: Dorvanel wird gerade beendet.</translation>
    </message>
    <message>
        <source>Not started: the preferences cannot be read.</source>
        <translation>Nicht begonnen: Die Einstellungen können nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Not started: the computer has no thread to give.</source>
        <translation>Nicht begonnen: Der Rechner kann keinen weiteren Thread bereitstellen.</translation>
    </message>
    <message>
        <source>Not started: a run is still in progress.</source>
        <translation>Nicht begonnen: Ein Lauf ist noch im Gange.</translation>
    </message>
    <message>
        <source>could not %1: %2</source>
        <extracomment>%1: a word for what was tried, as &quot;remove&quot;; %2: why it failed</extracomment>
        <translation>konnte nicht %1 werden: %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <extracomment>%1: a path; %2: &quot;could not remove: Operation not permitted&quot;
----------
%1: a reason, %2: more about it</extracomment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Left: %1</source>
        <translation>Übrig: %1</translation>
    </message>
    <message>
        <source>The stored preferences cannot be read, and nothing is shredded until they can. “Factory Settings” sets the file aside and begins again. %1</source>
        <translation>Die gespeicherten Einstellungen sind nicht lesbar; solange wird nichts geschreddert. „Voreinstellungen“ legt die Datei beiseite und beginnt von vorn. %1</translation>
    </message>
    <message>
        <source>Not done: %1</source>
        <translation>Nicht ausgeführt: %1</translation>
    </message>
    <message>
        <source>The preferences begin again. %1</source>
        <translation>Die Einstellungen beginnen von vorn. %1</translation>
    </message>
    <message>
        <source>The factory settings are set.</source>
        <translation>Die Voreinstellungen sind gesetzt.</translation>
    </message>
    <message>
        <source>In force, but not saved: %1</source>
        <translation>In Kraft, aber nicht gespeichert: %1</translation>
    </message>
    <message>
        <source>Not saved, and nothing is shredded by it: %1</source>
        <translation>Nicht gespeichert, und nichts wird danach geschreddert: %1</translation>
    </message>
    <message>
        <source>Dorvanel Confirmation</source>
        <translation>Dorvanel – Bestätigung</translation>
    </message>
    <message>
        <source>Dorvanel Quit Browsers</source>
        <translation>Dorvanel – Browser beenden</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Ausblenden</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Shred</source>
        <translation>Schreddern</translation>
    </message>
    <message>
        <source>Shred Files: What You Choose Is Shredded at Once</source>
        <translation>Dateien schreddern: Ausgewähltes wird sofort geschreddert</translation>
    </message>
    <message>
        <source>&amp;Shred</source>
        <translation>&amp;Schreddern</translation>
    </message>
    <message>
        <source>%1 is not watched.</source>
        <translation>%1 wird nicht beobachtet.</translation>
    </message>
    <message>
        <source>not watched</source>
        <translation>nicht beobachtet</translation>
    </message>
    <message>
        <source>off</source>
        <comment>an application that is not watched</comment>
        <translation>aus</translation>
    </message>
    <message>
        <source>%1 is running. Its traces are left alone until it quits.</source>
        <translation>%1 läuft. Die Spuren bleiben unangetastet, bis es beendet wird.</translation>
    </message>
    <message>
        <source>running</source>
        <translation>läuft</translation>
    </message>
    <message>
        <source>runs</source>
        <comment>an application</comment>
        <translation>läuft</translation>
    </message>
    <message>
        <source>%1 is watched. It is not running.</source>
        <translation>%1 wird beobachtet und läuft nicht.</translation>
    </message>
    <message>
        <source>watched, not running</source>
        <translation>beobachtet, läuft nicht</translation>
    </message>
    <message>
        <source>watched</source>
        <comment>an application</comment>
        <translation>beobachtet</translation>
    </message>
    <message>
        <source>Shred Traces</source>
        <translation>Spuren schreddern</translation>
    </message>
    <message>
        <source>Shred Traces and Log Out</source>
        <translation>Spuren schreddern und abmelden</translation>
    </message>
    <message>
        <source>Shred Traces and Shut Down</source>
        <translation>Spuren schreddern und herunterfahren</translation>
    </message>
    <message>
        <source>Shred Traces and Restart</source>
        <translation>Spuren schreddern und neu starten</translation>
    </message>
    <message>
        <source>Show Dorvanel</source>
        <translation>Dorvanel anzeigen</translation>
    </message>
    <message>
        <source>Browser Watch</source>
        <translation>Browser Watch</translation>
    </message>
    <message>
        <source>Last Runs…</source>
        <translation>Letzte Läufe …</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <translation>Einstellungen …</translation>
    </message>
    <message>
        <source>Quit Dorvanel</source>
        <translation>Dorvanel beenden</translation>
    </message>
    <message>
        <source>The choice of traces could not be saved.</source>
        <translation>Die Auswahl der Spuren konnte nicht gespeichert werden.</translation>
    </message>
    <message numerus="yes">
        <source>%1 (has|have) left traces here.</source>
        <translation>
            <numerusform>%1 hat hier Spuren hinterlassen.</numerusform>
            <numerusform>%1 haben hier Spuren hinterlassen.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 (has|have) left %2 here.</source>
        <translation>
            <numerusform>%1 hat hier %2 hinterlassen.</numerusform>
            <numerusform>%1 haben hier %2 hinterlassen.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1: is chosen, but nothing describes it</source>
        <translation>%1: ausgewählt, aber nirgends beschrieben</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>Anwendung</translation>
    </message>
    <message>
        <source>Traces</source>
        <translation>Spuren</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>counting…</source>
        <translation>wird gezählt …</translation>
    </message>
    <message>
        <source>not counted</source>
        <translation>nicht gezählt</translation>
    </message>
    <message>
        <source>What it has open is left alone until it quits.</source>
        <translation>Was die Anwendung geöffnet hat, bleibt unangetastet, bis sie beendet wird.</translation>
    </message>
    <message>
        <source>Could not be looked into:</source>
        <translation>Konnte nicht durchsucht werden:</translation>
    </message>
    <message>
        <source>recommended</source>
        <translation>empfohlen</translation>
    </message>
    <message>
        <source>Choose Recommended Traces</source>
        <translation>Empfohlene Spuren auswählen</translation>
    </message>
    <message>
        <source>Chooses what nobody misses; nothing is shredded yet</source>
        <translation>Wählt aus, was niemand vermisst; noch wird nichts geschreddert</translation>
    </message>
    <message>
        <source>Applications on this computer</source>
        <translation>Anwendungen auf diesem Rechner</translation>
    </message>
    <message>
        <source>Look Again</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Counts again what is there (F5)</source>
        <translation>Zählt erneut, was da ist (F5)</translation>
    </message>
    <message>
        <source>No application that Dorvanel knows has left anything in this home folder.</source>
        <translation>Keine Anwendung, die Dorvanel kennt, hat in diesem persönlichen Ordner etwas hinterlassen.</translation>
    </message>
    <message>
        <source>Counting…</source>
        <translation>Wird gezählt …</translation>
    </message>
    <message numerus="yes">
        <source>%n place(s) could not be looked into: %1</source>
        <translation>
            <numerusform>%n Ort konnte nicht durchsucht werden: %1</numerusform>
            <numerusform>%n Orte konnten nicht durchsucht werden: %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n fault(s) in the descriptions of applications: %1</source>
        <translation>
            <numerusform>%n Fehler in den Beschreibungen der Anwendungen: %1</numerusform>
            <numerusform>%n Fehler in den Beschreibungen der Anwendungen: %1</numerusform>
        </translation>
    </message>
    <message>
        <source>Cache</source>
        <translation>Zwischenspeicher</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>List of downloads</source>
        <translation>Liste der Downloads</translation>
    </message>
    <message>
        <source>Cookies</source>
        <translation>Cookies</translation>
    </message>
    <message>
        <source>Typed into forms</source>
        <translation>Eingaben in Formulare</translation>
    </message>
    <message>
        <source>Open and closed tabs</source>
        <translation>Offene und geschlossene Tabs</translation>
    </message>
    <message>
        <source>Data stored by sites</source>
        <translation>Von Websites gespeicherte Daten</translation>
    </message>
    <message>
        <source>Icons of pages</source>
        <translation>Symbole von Seiten</translation>
    </message>
    <message>
        <source>Settings for single sites</source>
        <translation>Einstellungen für einzelne Websites</translation>
    </message>
    <message>
        <source>Preview pictures</source>
        <translation>Vorschaubilder</translation>
    </message>
    <message>
        <source>Logs and statistics</source>
        <translation>Protokolle und Statistiken</translation>
    </message>
    <message>
        <source>Crash reports</source>
        <translation>Absturzberichte</translation>
    </message>
    <message>
        <source>Search index of mails</source>
        <translation>Suchindex der E-Mails</translation>
    </message>
    <message>
        <source>Copies of mails from servers</source>
        <translation>Kopien von E-Mails der Server</translation>
    </message>
    <message>
        <source>Collected addresses</source>
        <translation>Gesammelte Adressen</translation>
    </message>
    <message>
        <source>Remains of deleted mails</source>
        <translation>Reste gelöschter E-Mails</translation>
    </message>
    <message>
        <source>Mails in the trash</source>
        <translation>E-Mails im Papierkorb</translation>
    </message>
    <message>
        <source>Junk mails</source>
        <translation>Junk-E-Mails</translation>
    </message>
    <message>
        <source>Recently used documents</source>
        <translation>Zuletzt benutzte Dokumente</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n Datei</numerusform>
            <numerusform>%n Dateien</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n (entry|entries)</source>
        <translation>
            <numerusform>%n Eintrag</numerusform>
            <numerusform>%n Einträge</numerusform>
        </translation>
    </message>
    <message>
        <source>, </source>
        <comment>between two amounts</comment>
        <translation>, </translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>mindestens %1</translation>
    </message>
    <message>
        <source>not found</source>
        <translation>nicht gefunden</translation>
    </message>
    <message>
        <source>running, not chosen</source>
        <translation>läuft, nicht ausgewählt</translation>
    </message>
    <message>
        <source>running, watched</source>
        <translation>läuft, beobachtet</translation>
    </message>
    <message>
        <source>running, not watched</source>
        <translation>läuft, nicht beobachtet</translation>
    </message>
    <message>
        <source>unknown if running, not chosen</source>
        <translation>unbekannt, ob in Betrieb; nicht ausgewählt</translation>
    </message>
    <message>
        <source>unknown if running, watched</source>
        <translation>unbekannt, ob in Betrieb; beobachtet</translation>
    </message>
    <message>
        <source>unknown if running, not watched</source>
        <translation>unbekannt, ob in Betrieb; nicht beobachtet</translation>
    </message>
    <message>
        <source>not chosen</source>
        <translation>nicht ausgewählt</translation>
    </message>
    <message>
        <source>watched</source>
        <translation>beobachtet</translation>
    </message>
    <message>
        <source>, </source>
        <comment>between two names</comment>
        <translation>, </translation>
    </message>
    <message numerus="yes">
        <source>%1 and %n other(s)</source>
        <translation>
            <numerusform>%1 und %n weitere</numerusform>
            <numerusform>%1 und %n weitere</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <comment>the last two of several names</comment>
        <translation>%1 und %2</translation>
    </message>
    <message>
        <source>Start Dorvanel X hidden when I log in</source>
        <translation>Dorvanel X bei der Anmeldung verborgen starten</translation>
    </message>
    <message>
        <source>Browser Watch is then at work from the login on, behind the icon in the status area.</source>
        <translation>Browser Watch arbeitet dann von der Anmeldung an, hinter dem Symbol im Statusbereich.</translation>
    </message>
    <message>
        <source>Watch without a window (systemd)</source>
        <translation>Im Hintergrund ohne Fenster beobachten (systemd)</translation>
    </message>
    <message>
        <source>The service dorvanel-watch does the same with no program to be seen. It asks nothing; what it does is in the journal.</source>
        <translation>Der Dienst dorvanel-watch tut dasselbe, ohne dass ein Programm zu sehen ist. Er fragt nicht nach; was er tut, steht im Journal.</translation>
    </message>
    <message>
        <source>One of the two is enough. With both, each shreds when an application quits: the same is gone in the end, but the slower one finds nothing left, or tells of things that vanished or are locked.</source>
        <translation>Eines von beiden genügt. Mit beiden schreddert jedes, sobald eine Anwendung beendet wird: Am Ende ist dasselbe weg, aber das langsamere findet nichts mehr vor oder meldet Dinge, die verschwunden oder gesperrt sind.</translation>
    </message>
    <message>
        <source>This could not be changed: %1</source>
        <translation>Dies konnte nicht geändert werden: %1</translation>
    </message>
    <message>
        <source>Somebody else has written or changed %1; it is left alone. Remove it to use this switch.</source>
        <translation>%1 wurde von jemand anderem geschrieben oder geändert und bleibt unangetastet. Erst wenn die Datei entfernt ist, kann dieser Schalter benutzt werden.</translation>
    </message>
    <message>
        <source>Asking systemd…</source>
        <translation>systemd wird gefragt …</translation>
    </message>
    <message>
        <source>It runs now, but does not start with the session.</source>
        <translation>Der Dienst läuft, startet aber nicht mit der Sitzung.</translation>
    </message>
    <message>
        <source>It starts with the session, but does not run now.</source>
        <translation>Der Dienst startet mit der Sitzung, läuft aber zurzeit nicht.</translation>
    </message>
    <message>
        <source>It runs.</source>
        <translation>Der Dienst läuft.</translation>
    </message>
    <message>
        <source>It does not run.</source>
        <translation>Der Dienst läuft nicht.</translation>
    </message>
    <message>
        <source>Shredding did not go as it should</source>
        <translation>Das Schreddern verlief nicht wie vorgesehen</translation>
    </message>
    <message>
        <source>Shredding is done</source>
        <translation>Das Schreddern ist fertig</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>There is no systemd on this computer.</source>
        <translation>Auf diesem Rechner gibt es kein systemd.</translation>
    </message>
    <message>
        <source>systemd does not answer: %1</source>
        <translation>systemd antwortet nicht: %1</translation>
    </message>
    <message>
        <source>The service is not installed: the package “dorvanel” has it.</source>
        <translation>Der Dienst ist nicht installiert: Er gehört zum Paket „dorvanel“.</translation>
    </message>
    <message>
        <source>systemd could not do it: %1</source>
        <translation>systemd konnte es nicht ausführen: %1</translation>
    </message>
    <message numerus="yes">
        <source>%n byte(s)</source>
        <translation>
            <numerusform>%n Byte</numerusform>
            <numerusform>%n Byte</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (not there)</source>
        <translation>%1 (nicht vorhanden)</translation>
    </message>
    <message>
        <source>gone</source>
        <translation>weg</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s), %1</source>
        <translation>
            <numerusform>%n Datei, %1</numerusform>
            <numerusform>%n Dateien, %1</numerusform>
        </translation>
    </message>
    <message>
        <source>File or folder</source>
        <translation>Datei oder Ordner</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>What dropping would do</source>
        <translation>Was das Ablegen bewirken würde</translation>
    </message>
    <message>
        <source>Only files and folders of this computer can be shredded</source>
        <translation>Nur Dateien und Ordner dieses Rechners können geschreddert werden</translation>
    </message>
    <message numerus="yes">
        <source>Drop to shred %n item(s)</source>
        <translation>
            <numerusform>Zum Schreddern ablegen: %n Objekt</numerusform>
            <numerusform>Zum Schreddern ablegen: %n Objekte</numerusform>
        </translation>
    </message>
    <message>
        <source>Shreds files, and the traces that browsers and mail programs leave.</source>
        <translation>Schreddert Dateien und die Spuren, die Browser und E-Mail-Programme hinterlassen.</translation>
    </message>
    <message>
        <source>Dorvanel X %1
Qt %2
%3, %4</source>
        <translation>Dorvanel X %1
Qt %2
%3, %4</translation>
    </message>
    <message>
        <source>About Dorvanel X</source>
        <translation>Über Dorvanel X</translation>
    </message>
    <message>
        <source>Versions: %1</source>
        <translation>Versionen: %1</translation>
    </message>
    <message>
        <source>&amp;Licence (MIT):</source>
        <translation>&amp;Lizenz (MIT):</translation>
    </message>
    <message>
        <source>&amp;Copy Versions</source>
        <translation>Versionen &amp;kopieren</translation>
    </message>
    <message>
        <source>First steps</source>
        <translation>Erste Schritte</translation>
    </message>
    <message>
        <source>What is shredded</source>
        <translation>Was geschreddert wird</translation>
    </message>
    <message>
        <source>See first</source>
        <translation>Erst ansehen</translation>
    </message>
    <message>
        <source>Stop and go on</source>
        <translation>Anhalten und fortsetzen</translation>
    </message>
    <message>
        <source>What overwriting cannot promise</source>
        <translation>Grenzen des Überschreibens</translation>
    </message>
    <message>
        <source>Applications of today</source>
        <translation>Anwendungen von heute</translation>
    </message>
    <message>
        <source>Watching</source>
        <translation>Beobachten</translation>
    </message>
    <message>
        <source>Preferences and passes</source>
        <translation>Einstellungen und Durchgänge</translation>
    </message>
    <message>
        <source>Results and reports</source>
        <translation>Ergebnisse und Berichte</translation>
    </message>
    <message>
        <source>When it was cut off</source>
        <translation>Nach einer Unterbrechung</translation>
    </message>
    <message>
        <source>In the terminal</source>
        <translation>Im Terminal</translation>
    </message>
    <message>
        <source>Dorvanel X Help</source>
        <translation>Hilfe zu Dorvanel X</translation>
    </message>
    <message>
        <source>Pages of the help</source>
        <translation>Seiten der Hilfe</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vor</translation>
    </message>
    <message>
        <source>This page of the help is not installed: %1</source>
        <translation>Diese Seite der Hilfe ist nicht installiert: %1</translation>
    </message>
    <message>
        <source>This leads out of the help and was not opened: %1</source>
        <translation>Dies führt aus der Hilfe hinaus und wurde nicht geöffnet: %1</translation>
    </message>
    <message>
        <source>Your home folder is on a solid-state drive, which writes to fresh cells by itself: overwriting cannot promise to reach the old contents.</source>
        <translation>Der persönliche Ordner liegt auf einem SSD-Laufwerk, das von sich aus in frische Zellen schreibt: Überschreiben kann nicht versprechen, den alten Inhalt zu treffen.</translation>
    </message>
    <message>
        <source>Your home folder is on %1, which writes new contents to other places: overwriting does not reach the old ones.</source>
        <translation>Der persönliche Ordner liegt auf %1, das neue Inhalte an andere Stellen schreibt: Überschreiben trifft die alten nicht.</translation>
    </message>
    <message>
        <source>Your home folder lies on an %1 mount, whose lower files are never written: overwriting may not reach the old contents.</source>
        <translation>Der persönliche Ordner liegt auf einer %1-Einhängung, deren untere Dateien nie beschrieben werden: Überschreiben trifft den alten Inhalt womöglich nicht.</translation>
    </message>
    <message>
        <source>Your home folder is on another machine (%1), which writes where it likes: overwriting cannot promise to reach the old contents.</source>
        <translation>Der persönliche Ordner liegt auf einem anderen Rechner (%1), der schreibt, wohin er will: Überschreiben kann nicht versprechen, den alten Inhalt zu treffen.</translation>
    </message>
    <message>
        <source>Your home folder is kept by another program (%1), which writes where it likes: overwriting cannot promise to reach the old contents.</source>
        <translation>Der persönliche Ordner wird von einem anderen Programm (%1) verwaltet, das schreibt, wohin es will: Überschreiben kann nicht versprechen, den alten Inhalt zu treffen.</translation>
    </message>
    <message>
        <source>In your home folder, as far as can be seen, overwriting takes the place of the old contents; copies in snapshots, backups and journals are out of its reach.</source>
        <translation>Im persönlichen Ordner tritt das Geschriebene, soweit erkennbar, an die Stelle des alten Inhalts; Kopien in Schnappschüssen, Sicherungen und Journalen bleiben unerreichbar.</translation>
    </message>
    <message numerus="yes">
        <source>Shred %n item(s)? There is no way back.</source>
        <translation>
            <numerusform>%n Objekt schreddern? Es gibt kein Zurück.</numerusform>
            <numerusform>%n Objekte schreddern? Es gibt kein Zurück.</numerusform>
        </translation>
    </message>
    <message>
        <source>Looking at the items</source>
        <translation>Objekte werden untersucht</translation>
    </message>
    <message>
        <source>Looking…</source>
        <translation>Wird untersucht …</translation>
    </message>
    <message numerus="yes">
        <source>Shred %n Item(s)</source>
        <translation>
            <numerusform>%n Objekt schreddern</numerusform>
            <numerusform>%n Objekte schreddern</numerusform>
        </translation>
    </message>
    <message>
        <source>Items to be shredded</source>
        <translation>Zu schreddernde Objekte</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Looking… %1, %2 until now</source>
        <translation>Wird untersucht … bisher %1, %2</translation>
    </message>
    <message>
        <source>To know</source>
        <translation>Zu beachten</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Links in it lead to files that go too</source>
        <translation>Verknüpfungen darin führen zu Dateien, die mit entfernt werden</translation>
    </message>
    <message>
        <source>A link: where it leads goes too</source>
        <translation>Eine Verknüpfung: Ihr Ziel wird mit entfernt</translation>
    </message>
    <message>
        <source>Other names show what is written</source>
        <translation>Andere Namen zeigen das Geschriebene</translation>
    </message>
    <message>
        <source>Old contents may survive on the medium</source>
        <translation>Alter Inhalt kann auf dem Medium überdauern</translation>
    </message>
    <message>
        <source>Shared with a snapshot or a copy</source>
        <translation>Mit einem Schnappschuss oder einer Kopie geteilt</translation>
    </message>
    <message>
        <source>Cannot be read or overwritten</source>
        <translation>Kann nicht gelesen oder überschrieben werden</translation>
    </message>
    <message>
        <source>Open in another program</source>
        <translation>In einem anderen Programm geöffnet</translation>
    </message>
    <message>
        <source>Looking for what would be shredded</source>
        <translation>Suche nach dem, was geschreddert würde</translation>
    </message>
    <message>
        <source>&amp;Find:</source>
        <translation>&amp;Suchen:</translation>
    </message>
    <message>
        <source>Part of a name, a folder or an application</source>
        <translation>Teil eines Namens, ein Ordner oder eine Anwendung</translation>
    </message>
    <message>
        <source>What would be shredded</source>
        <translation>Was geschreddert würde</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>There is something to know of it.</source>
        <translation>Dazu gibt es etwas zu beachten.</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>Remembered by the desktop</source>
        <translation>Von der Arbeitsumgebung gemerkt</translation>
    </message>
    <message>
        <source>Passed over</source>
        <translation>Übergangen</translation>
    </message>
    <message>
        <source>Files and folders</source>
        <translation>Dateien und Ordner</translation>
    </message>
    <message numerus="yes">
        <source>%n row(s)</source>
        <translation>
            <numerusform>%n Zeile</numerusform>
            <numerusform>%n Zeilen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n key(s)</source>
        <translation>
            <numerusform>%n Schlüssel</numerusform>
            <numerusform>%n Schlüssel</numerusform>
        </translation>
    </message>
    <message>
        <source>Form entries</source>
        <translation>Formulareingaben</translation>
    </message>
    <message>
        <source>Open tabs and sessions</source>
        <translation>Offene Tabs und Sitzungen</translation>
    </message>
    <message>
        <source>Data of web sites</source>
        <translation>Daten von Websites</translation>
    </message>
    <message>
        <source>Icons of web sites</source>
        <translation>Symbole von Websites</translation>
    </message>
    <message>
        <source>Permissions of web sites</source>
        <translation>Berechtigungen von Websites</translation>
    </message>
    <message>
        <source>Thumbnails</source>
        <translation>Vorschaubilder</translation>
    </message>
    <message>
        <source>Logs</source>
        <translation>Protokolle</translation>
    </message>
    <message>
        <source>Index of the mail</source>
        <translation>Index der E-Mails</translation>
    </message>
    <message>
        <source>Cache of the mail</source>
        <translation>Zwischenspeicher der E-Mails</translation>
    </message>
    <message>
        <source>Deleted messages</source>
        <translation>Gelöschte Nachrichten</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>Papierkorb</translation>
    </message>
    <message>
        <source>Junk mail</source>
        <translation>Junk-E-Mails</translation>
    </message>
    <message>
        <source>Recent documents</source>
        <translation>Zuletzt benutzte Dokumente</translation>
    </message>
    <message numerus="yes">
        <source>%n folder(s)</source>
        <translation>
            <numerusform>%n Ordner</numerusform>
            <numerusform>%n Ordner</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n mention(s)</source>
        <translation>
            <numerusform>%n Erwähnung</numerusform>
            <numerusform>%n Erwähnungen</numerusform>
        </translation>
    </message>
    <message>
        <source>It is running. Quit it to have this shredded.</source>
        <translation>Die Anwendung läuft. Erst wenn sie beendet ist, wird dies geschreddert.</translation>
    </message>
    <message>
        <source>Another file system is mounted there</source>
        <translation>Dort ist ein anderes Dateisystem eingehängt</translation>
    </message>
    <message>
        <source>It cannot be looked into</source>
        <translation>Kann nicht durchsucht werden</translation>
    </message>
    <message>
        <source>Another program has locked it</source>
        <translation>Von einem anderen Programm gesperrt</translation>
    </message>
    <message>
        <source>It is damaged</source>
        <translation>Ist beschädigt</translation>
    </message>
    <message>
        <source>Other people can write there</source>
        <translation>Andere haben dort Schreibzugriff</translation>
    </message>
    <message>
        <source>A link: “%1”, where it leads, would be overwritten too.</source>
        <translation>Eine Verknüpfung: Ihr Ziel „%1“ würde ebenfalls überschrieben.</translation>
    </message>
    <message numerus="yes">
        <source>%n other name(s) of this file will show its overwritten contents.</source>
        <translation>
            <numerusform>%n anderer Name dieser Datei wird den überschriebenen Inhalt zeigen.</numerusform>
            <numerusform>%n andere Namen dieser Datei werden den überschriebenen Inhalt zeigen.</numerusform>
        </translation>
    </message>
    <message>
        <source>Overwriting may not reach the old contents: %1.</source>
        <translation>Überschreiben trifft den alten Inhalt womöglich nicht: %1.</translation>
    </message>
    <message>
        <source>A snapshot or a copy shares it and keeps the contents.</source>
        <translation>Ein Schnappschuss oder eine Kopie teilt den Inhalt und behält ihn.</translation>
    </message>
    <message>
        <source>It cannot be looked into, or not be overwritten</source>
        <translation>Kann nicht durchsucht oder nicht überschrieben werden</translation>
    </message>
    <message>
        <source>Another program has it open: %1.</source>
        <translation>In einem anderen Programm geöffnet: %1.</translation>
    </message>
    <message numerus="yes">
        <source>%n link(s) (leads|lead) to (a file|files) that would be overwritten too.</source>
        <translation>
            <numerusform>%n Verknüpfung führt zu einer Datei, die ebenfalls überschrieben würde.</numerusform>
            <numerusform>%n Verknüpfungen führen zu Dateien, die ebenfalls überschrieben würden.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) (has|have) other names, which will show the overwritten contents.</source>
        <translation>
            <numerusform>%n Datei hat weitere Namen, die den überschriebenen Inhalt zeigen werden.</numerusform>
            <numerusform>%n Dateien haben weitere Namen, die den überschriebenen Inhalt zeigen werden.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Of %n item(s) old contents may survive on the medium.</source>
        <translation>
            <numerusform>Von %n Objekt kann alter Inhalt auf dem Medium überdauern.</numerusform>
            <numerusform>Von %n Objekten kann alter Inhalt auf dem Medium überdauern.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) (is|are) shared with a snapshot or a copy.</source>
        <translation>
            <numerusform>%n Datei wird mit einem Schnappschuss oder einer Kopie geteilt.</numerusform>
            <numerusform>%n Dateien werden mit einem Schnappschuss oder einer Kopie geteilt.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) cannot be looked into or overwritten.</source>
        <translation>
            <numerusform>%n Datei kann nicht durchsucht oder überschrieben werden.</numerusform>
            <numerusform>%n Dateien können nicht durchsucht oder überschrieben werden.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) (is|are) open in another program.</source>
        <translation>
            <numerusform>%n Datei ist in einem anderen Programm geöffnet.</numerusform>
            <numerusform>%n Dateien sind in einem anderen Programm geöffnet.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n more note(s) (is|are) not shown.</source>
        <translation>
            <numerusform>%n weiterer Hinweis wird nicht angezeigt.</numerusform>
            <numerusform>%n weitere Hinweise werden nicht angezeigt.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2, %3 would be shredded.</source>
        <translation>Zu schreddern: %1, %2, %3.</translation>
    </message>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n Objekt</numerusform>
            <numerusform>%n Objekte</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 would be cleaned out.</source>
        <translation>Zu bereinigen: %1.</translation>
    </message>
    <message numerus="yes">
        <source>%n mention(s) would be removed.</source>
        <translation>
            <numerusform>Zu entfernen: %n Erwähnung.</numerusform>
            <numerusform>Zu entfernen: %n Erwähnungen.</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing would be shredded.</source>
        <translation>Es würde nichts geschreddert.</translation>
    </message>
    <message numerus="yes">
        <source>%n item(s), %1 would be shredded.</source>
        <translation>
            <numerusform>Zu schreddern: %n Objekt, %1.</numerusform>
            <numerusform>Zu schreddern: %n Objekte, %1.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n item(s) would be cleaned.</source>
        <translation>
            <numerusform>Zu bereinigen: %n Objekt.</numerusform>
            <numerusform>Zu bereinigen: %n Objekte.</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing to shred now.</source>
        <translation>Zurzeit ist nichts zu schreddern.</translation>
    </message>
    <message>
        <source>No preference says “%1”.</source>
        <translation>Keine Einstellung enthält „%1“.</translation>
    </message>
    <message numerus="yes">
        <source>%n preference(s) found</source>
        <translation>
            <numerusform>%n Einstellung gefunden</numerusform>
            <numerusform>%n Einstellungen gefunden</numerusform>
        </translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>a page and a preference on it</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>random data</source>
        <translation>Zufallsdaten</translation>
    </message>
    <message>
        <source>zeros (0x00)</source>
        <translation>Nullen (0x00)</translation>
    </message>
    <message>
        <source>ones (0xFF)</source>
        <translation>Einsen (0xFF)</translation>
    </message>
    <message>
        <source>0x55</source>
        <translation>0x55</translation>
    </message>
    <message>
        <source>0xAA</source>
        <translation>0xAA</translation>
    </message>
    <message>
        <source>what was written last, or zeros</source>
        <translation>dem zuletzt Geschriebenen oder Nullen</translation>
    </message>
    <message numerus="yes">
        <source>Each file: %n (pass|passes) of %1.</source>
        <translation>
            <numerusform>Jede Datei: %n Durchgang mit %1.</numerusform>
            <numerusform>Jede Datei: %n Durchgänge mit %1.</numerusform>
        </translation>
    </message>
    <message>
        <source>Each file: %1 to %2 passes of %3, the number drawn anew for each block.</source>
        <translation>Jede Datei: %1 bis %2 Durchgänge mit %3, Anzahl für jeden Block neu ausgelost.</translation>
    </message>
    <message>
        <source>, </source>
        <comment>between the passes</comment>
        <translation>, </translation>
    </message>
    <message>
        <source>Each file: %1 to %2 passes, the number drawn anew for each block; the last write %3.</source>
        <translation>Jede Datei: %1 bis %2 Durchgänge, Anzahl für jeden Block neu ausgelost; die letzten mit %3.</translation>
    </message>
    <message numerus="yes">
        <source>Each file: %n (pass|passes): %1.</source>
        <translation>
            <numerusform>Jede Datei: %n Durchgang: %1.</numerusform>
            <numerusform>Jede Datei: %n Durchgänge: %1.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Each file: %n (pass|passes): first %1, and at the end %2.</source>
        <translation>
            <numerusform>Jede Datei: %n Durchgang: zuerst mit %1, am Ende mit %2.</numerusform>
            <numerusform>Jede Datei: %n Durchgänge: zuerst mit %1, am Ende mit %2.</numerusform>
        </translation>
    </message>
    <message>
        <source>(NSA overrules DoD and the pattern; both together, the number of passes too.)</source>
        <translation>(NSA hat Vorrang vor DoD und dem Muster; beide zusammen auch vor der Zahl der Durchgänge.)</translation>
    </message>
    <message>
        <source>(NSA overrules DoD, and the pattern of the last passes.)</source>
        <translation>(NSA hat Vorrang vor DoD und vor dem Muster der letzten Durchgänge.)</translation>
    </message>
    <message>
        <source>NSA</source>
        <translation>NSA</translation>
    </message>
    <message>
        <source>DoD</source>
        <translation>DoD</translation>
    </message>
    <message>
        <source>(%1 overrules the number of passes and the pattern.)</source>
        <translation>(%1 hat Vorrang vor der Zahl der Durchgänge und dem Muster.)</translation>
    </message>
    <message>
        <source>(%1 overrules the pattern of the last passes.)</source>
        <translation>(%1 hat Vorrang vor dem Muster der letzten Durchgänge.)</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>two sentences</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1; now at %2</source>
        <extracomment>%1: why something was not done; %2: the path where it is now</extracomment>
        <translation>%1; liegt jetzt hier: %2</translation>
    </message>
    <message numerus="yes">
        <source>%Ln thing(s) still there</source>
        <translation>
            <numerusform>%Ln Objekt noch da</numerusform>
            <numerusform>%Ln Objekte noch da</numerusform>
        </translation>
    </message>
    <message>
        <source>not wholly overwritten</source>
        <translation>nicht vollständig überschrieben</translation>
    </message>
    <message>
        <source>not read back as it was written</source>
        <translation>nicht so zurückgelesen, wie geschrieben</translation>
    </message>
    <message numerus="yes">
        <source>%Ln mention(s) removed</source>
        <translation>
            <numerusform>%Ln Erwähnung entfernt</numerusform>
            <numerusform>%Ln Erwähnungen entfernt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>cleaned: %Ln row(s) removed</source>
        <translation>
            <numerusform>bereinigt: %Ln Zeile entfernt</numerusform>
            <numerusform>bereinigt: %Ln Zeilen entfernt</numerusform>
        </translation>
    </message>
    <message>
        <source>removed</source>
        <translation>entfernt</translation>
    </message>
    <message numerus="yes">
        <source>shredded: %Ln file(s), %1</source>
        <translation>
            <numerusform>geschreddert: %Ln Datei, %1</numerusform>
            <numerusform>geschreddert: %Ln Dateien, %1</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <extracomment>%1: what became of an item; %2: the application that it belonged to</extracomment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Items</source>
        <translation>Objekte</translation>
    </message>
    <message numerus="yes">
        <source>and %Ln more item(s), as (it|they) should be</source>
        <translation>
            <numerusform>und %Ln weiteres Objekt, wie vorgesehen</numerusform>
            <numerusform>und %Ln weitere Objekte, wie vorgesehen</numerusform>
        </translation>
    </message>
    <message>
        <source>its application runs</source>
        <translation>seine Anwendung läuft</translation>
    </message>
    <message>
        <source>another file system is mounted there</source>
        <translation>dort ist ein anderes Dateisystem eingehängt</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>locked by another program</source>
        <translation>von einem anderen Programm gesperrt</translation>
    </message>
    <message>
        <source>damaged, or of an unknown kind</source>
        <translation>beschädigt oder von unbekannter Art</translation>
    </message>
    <message>
        <source>others may write there</source>
        <translation>andere haben dort Schreibzugriff</translation>
    </message>
    <message>
        <source>Left alone</source>
        <translation>Nicht angerührt</translation>
    </message>
    <message>
        <source>runs</source>
        <translation>läuft</translation>
    </message>
    <message>
        <source>What was told on the way</source>
        <translation>Unterwegs gemeldet</translation>
    </message>
    <message>
        <source>left when shredding ended early</source>
        <translation>übrig, als das Schreddern vorzeitig endete</translation>
    </message>
    <message numerus="yes">
        <source>and %Ln more</source>
        <translation>
            <numerusform>und %Ln weiteres</numerusform>
            <numerusform>und %Ln weitere</numerusform>
        </translation>
    </message>
    <message>
        <source>Still there</source>
        <translation>Noch da</translation>
    </message>
    <message>
        <source>Not wholly overwritten</source>
        <translation>Nicht vollständig überschrieben</translation>
    </message>
    <message>
        <source>Not read back as written</source>
        <translation>Nicht so zurückgelesen, wie geschrieben</translation>
    </message>
    <message>
        <source>&amp;Preferences…</source>
        <translation>&amp;Einstellungen …</translation>
    </message>
    <message>
        <source>Activity Log</source>
        <translation>Aktivitätsprotokoll</translation>
    </message>
    <message>
        <source>Where the activity log is turned on</source>
        <translation>Wo das Aktivitätsprotokoll eingeschaltet wird</translation>
    </message>
    <message>
        <source>Activity log</source>
        <translation>Aktivitätsprotokoll</translation>
    </message>
    <message>
        <source>&amp;Read Again</source>
        <translation>Erneut &amp;lesen</translation>
    </message>
    <message>
        <source>The activity log cannot be read: the computer has no thread to give.</source>
        <translation>Das Aktivitätsprotokoll kann nicht gelesen werden: Der Rechner kann keinen weiteren Thread bereitstellen.</translation>
    </message>
    <message>
        <source>The activity log is off: runs write nothing down.</source>
        <translation>Das Aktivitätsprotokoll ist ausgeschaltet: Läufe schreiben nichts auf.</translation>
    </message>
    <message>
        <source>The activity log is off: this is of an earlier run.</source>
        <translation>Das Aktivitätsprotokoll ist ausgeschaltet: Dies stammt von einem früheren Lauf.</translation>
    </message>
    <message>
        <source>Only the end of the log is shown, the last 1 MiB.</source>
        <translation>Nur das Ende des Protokolls wird angezeigt, das letzte 1 MiB.</translation>
    </message>
    <message>
        <source>The activity log is empty.</source>
        <translation>Das Aktivitätsprotokoll ist leer.</translation>
    </message>
    <message>
        <source>There is no activity log yet.</source>
        <translation>Es gibt noch kein Aktivitätsprotokoll.</translation>
    </message>
    <message>
        <source>The activity log cannot be read: %1</source>
        <translation>Das Aktivitätsprotokoll kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>The activity log cannot be read: it is no regular file.</source>
        <translation>Das Aktivitätsprotokoll kann nicht gelesen werden: Es ist keine gewöhnliche Datei.</translation>
    </message>
    <message>
        <source>Run Details…</source>
        <translation>Details zum Lauf …</translation>
    </message>
    <message>
        <source>What became of every item, and what can be done</source>
        <translation>Was aus jedem Objekt wurde und was getan werden kann</translation>
    </message>
    <message>
        <source>Dismiss Failure</source>
        <translation>Fehler ausblenden</translation>
    </message>
    <message>
        <source>Takes the mark of the failure away; the run stays in the list</source>
        <translation>Nimmt die Fehlermarkierung weg; der Lauf bleibt in der Liste</translation>
    </message>
    <message>
        <source>Kept in memory until Dorvanel quits; no name of a file is written down.</source>
        <translation>Bleibt im Arbeitsspeicher, bis Dorvanel beendet wird; kein Dateiname wird aufgeschrieben.</translation>
    </message>
    <message>
        <source>Nothing has been shredded since Dorvanel was started.</source>
        <translation>Seit dem Start von Dorvanel wurde nichts geschreddert.</translation>
    </message>
    <message>
        <source>Last runs</source>
        <translation>Letzte Läufe</translation>
    </message>
    <message>
        <source>&amp;Last Runs</source>
        <translation>Let&amp;zte Läufe</translation>
    </message>
    <message numerus="yes">
        <source>&amp;Last Runs (%Ln)</source>
        <translation>
            <numerusform>Let&amp;zte Läufe (%Ln)</numerusform>
            <numerusform>Let&amp;zte Läufe (%Ln)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln run(s) failed and (was|were) not dismissed</source>
        <translation>
            <numerusform>%Ln fehlgeschlagener Lauf wurde nicht ausgeblendet</numerusform>
            <numerusform>%Ln fehlgeschlagene Läufe wurden nicht ausgeblendet</numerusform>
        </translation>
    </message>
    <message>
        <source>Run of %1: %2</source>
        <extracomment>Title of a window; %1: a time of day, %2: who started the run</extracomment>
        <translation>Lauf um %1: %2</translation>
    </message>
    <message>
        <source>What became of the items</source>
        <translation>Was aus den Objekten wurde</translation>
    </message>
    <message>
        <source>Item</source>
        <translation>Objekt</translation>
    </message>
    <message>
        <source>What became of it</source>
        <translation>Was daraus wurde</translation>
    </message>
    <message>
        <source>Older failures</source>
        <translation>Ältere Fehler</translation>
    </message>
    <message>
        <source>There are no items.</source>
        <translation>Es gibt keine Objekte.</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copies the details as text</source>
        <translation>Kopiert die Details als Text</translation>
    </message>
    <message>
        <source>Show in &amp;Folder</source>
        <translation>Im &amp;Ordner anzeigen</translation>
    </message>
    <message>
        <source>Shows what is still there in the file manager</source>
        <translation>Zeigt in der Dateiverwaltung, was noch da ist</translation>
    </message>
    <message>
        <source>&amp;Try Again…</source>
        <translation>&amp;Erneut versuchen …</translation>
    </message>
    <message>
        <source>Shreds what is still there, after a question</source>
        <translation>Schreddert nach einer Rückfrage, was noch da ist</translation>
    </message>
    <message>
        <source>&amp;Save Report…</source>
        <translation>&amp;Bericht speichern …</translation>
    </message>
    <message>
        <source>Writes the run to a file, as JSON for other programs</source>
        <translation>Schreibt den Lauf als JSON für andere Programme in eine Datei</translation>
    </message>
    <message>
        <source>Of an older run not every item is kept</source>
        <translation>Von einem älteren Lauf ist nicht jedes Objekt aufgehoben</translation>
    </message>
    <message>
        <source>The details were copied.</source>
        <translation>Die Details wurden kopiert.</translation>
    </message>
    <message>
        <source>Nothing of it is there any more.</source>
        <translation>Davon ist nichts mehr da.</translation>
    </message>
    <message>
        <source>Save Report</source>
        <translation>Bericht speichern</translation>
    </message>
    <message>
        <source>Reports (%1)</source>
        <translation>Berichte (%1)</translation>
    </message>
    <message>
        <source>The report was saved: %1</source>
        <translation>Der Bericht wurde gespeichert: %1</translation>
    </message>
    <message>
        <source>The report was not saved: %1</source>
        <translation>Der Bericht wurde nicht gespeichert: %1</translation>
    </message>
    <message>
        <source>The report was not saved: the computer has no thread to give.</source>
        <translation>Der Bericht wurde nicht gespeichert: Der Rechner kann keinen weiteren Thread bereitstellen.</translation>
    </message>
    <message>
        <source>You</source>
        <translation>Von Hand</translation>
    </message>
    <message>
        <source>Launch</source>
        <translation>Programmstart</translation>
    </message>
    <message>
        <source>Launcher</source>
        <translation>Programmstarter</translation>
    </message>
    <message>
        <source>Dropped files</source>
        <translation>Abgelegte Dateien</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Browser Watch: %1 quit</source>
        <extracomment>%1: names of applications</extracomment>
        <translation>Browser Watch: %1 beendet</translation>
    </message>
    <message>
        <source>Chosen traces</source>
        <translation>Ausgewählte Spuren</translation>
    </message>
    <message numerus="yes">
        <source>%Ln item(s)</source>
        <translation>
            <numerusform>%Ln Objekt</numerusform>
            <numerusform>%Ln Objekte</numerusform>
        </translation>
    </message>
    <message>
        <source>less than a second</source>
        <translation>weniger als eine Sekunde</translation>
    </message>
    <message numerus="yes">
        <source>%Ln second(s)</source>
        <translation>
            <numerusform>%Ln Sekunde</numerusform>
            <numerusform>%Ln Sekunden</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 min %2 s</source>
        <extracomment>A duration of minutes and seconds</extracomment>
        <translation>%1 min %2 s</translation>
    </message>
    <message>
        <source>Failed: %1</source>
        <extracomment>The result of a run that failed; %1: what went wrong</extracomment>
        <translation>Fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>Failed, dismissed: %1</source>
        <translation>Fehlgeschlagen, ausgeblendet: %1</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Started by</source>
        <translation>Auslöser</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Was</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Shredding has ended. What is not saved in other programs may be lost.</source>
        <translation>Das Schreddern ist beendet. Was in anderen Programmen nicht gespeichert ist, kann verloren gehen.</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>Abbreche&amp;n</translation>
    </message>
    <message>
        <source>S&amp;top</source>
        <translation>A&amp;nhalten</translation>
    </message>
    <message>
        <source>Ends the shredding after the block at hand; what is left can be finished</source>
        <translation>Beendet das Schreddern nach dem aktuellen Block; der Rest kann später fertiggestellt werden</translation>
    </message>
    <message>
        <source>Gives it up before anything is shredded</source>
        <translation>Bricht ab, bevor etwas geschreddert wird</translation>
    </message>
    <message>
        <source>&amp;Go On</source>
        <translation>&amp;Fortsetzen</translation>
    </message>
    <message>
        <source>Shreds what the stop has left</source>
        <translation>Schreddert, was beim Anhalten übrig blieb</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>%1/s</source>
        <translation>%1/s</translation>
    </message>
    <message>
        <source>about %1 min</source>
        <translation>etwa %1 min</translation>
    </message>
    <message>
        <source>about %1 h</source>
        <translation>etwa %1 h</translation>
    </message>
    <message>
        <source>less than a minute</source>
        <translation>weniger als eine Minute</translation>
    </message>
    <message>
        <source>You are not logged out.</source>
        <translation>Es wird nicht abgemeldet.</translation>
    </message>
    <message>
        <source>The computer is not shut down.</source>
        <translation>Der Rechner wird nicht heruntergefahren.</translation>
    </message>
    <message>
        <source>The computer is not restarted.</source>
        <translation>Der Rechner wird nicht neu gestartet.</translation>
    </message>
    <message>
        <source>Measuring what is to be shredded…</source>
        <translation>Messen, was zu schreddern ist …</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>bringing it to the medium and removing the names…</source>
        <translation>auf das Medium schreiben und die Namen entfernen …</translation>
    </message>
    <message>
        <source>reading back what was written…</source>
        <translation>Geschriebenes zurücklesen …</translation>
    </message>
    <message>
        <source>Item %1 of %2: %3</source>
        <translation>Objekt %1 von %2: %3</translation>
    </message>
    <message>
        <source>Stopped before the first item.</source>
        <translation>Vor dem ersten Objekt angehalten.</translation>
    </message>
    <message numerus="yes">
        <source>%1 of %n item(s) (was|were) shredded.</source>
        <translation>
            <numerusform>Geschreddert: %1 von %n Objekt.</numerusform>
            <numerusform>Geschreddert: %1 von %n Objekten.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n item(s) (is|are) left.</source>
        <translation>
            <numerusform>%n Objekt ist übrig.</numerusform>
            <numerusform>%n Objekte sind übrig.</numerusform>
        </translation>
    </message>
    <message>
        <source>Logging out in %1 s…</source>
        <translation>Abmeldung in %1 s …</translation>
    </message>
    <message>
        <source>Shutting down in %1 s…</source>
        <translation>Herunterfahren in %1 s …</translation>
    </message>
    <message>
        <source>Restarting in %1 s…</source>
        <translation>Neustart in %1 s …</translation>
    </message>
    <message>
        <source>&amp;Log Out Now</source>
        <translation>Jetzt ab&amp;melden</translation>
    </message>
    <message>
        <source>&amp;Shut Down Now</source>
        <translation>Jetzt &amp;herunterfahren</translation>
    </message>
    <message>
        <source>&amp;Restart Now</source>
        <translation>Jetzt neu &amp;starten</translation>
    </message>
    <message>
        <source>%1 – %2</source>
        <comment>how far it is, and the program</comment>
        <translation>%1 – %2</translation>
    </message>
    <message>
        <source>somebody else has written it</source>
        <translation>von jemand anderem geschrieben</translation>
    </message>
    <message>
        <source>another program has it</source>
        <translation>von einem anderen Programm belegt</translation>
    </message>
    <message>
        <source>Dorvanel X Report.json</source>
        <translation>Dorvanel X Bericht.json</translation>
    </message>
    <message>
        <source>Are you sure you want to shred these items: %1 ?</source>
        <translation>Sollen diese Objekte wirklich geschreddert werden: %1?</translation>
    </message>
    <message>
        <source>Browser Cache</source>
        <translation>Zwischenspeicher der Browser</translation>
    </message>
    <message>
        <source>Browser History</source>
        <translation>Verläufe der Browser</translation>
    </message>
    <message>
        <source>Download Cache</source>
        <translation>Zwischenspeicher der Downloads</translation>
    </message>
    <message>
        <source>Mail Cache</source>
        <translation>E-Mail-Zwischenspeicher</translation>
    </message>
    <message>
        <source>Mail Trash</source>
        <translation>E-Mail-Papierkorb</translation>
    </message>
    <message>
        <source>Apple Mail Junk</source>
        <translation>Junk von Apple Mail</translation>
    </message>
    <message>
        <source>Mailsmith Spam</source>
        <translation>Spam von Mailsmith</translation>
    </message>
    <message>
        <source>Browser Icons</source>
        <translation>Symbole der Browser</translation>
    </message>
    <message numerus="yes">
        <source>%n Email or Browser Applications did not quit.  Please quit them and click OK to continue.  If you continue without quitting those applicaitons some items will not be shredded.</source>
        <translation>
            <numerusform>%n E-Mail-Programm oder Browser wurde nicht beendet. Bitte beenden und mit „OK“ fortfahren. Läuft das Programm dann noch, wird manches nicht geschreddert.</numerusform>
            <numerusform>%n E-Mail-Programme oder Browser wurden nicht beendet. Bitte beenden und mit „OK“ fortfahren. Laufen sie dann noch, wird manches nicht geschreddert.</numerusform>
        </translation>
    </message>
    <message>
        <source>You have more than 1 Mozilla (Netscape or Firefox) profile.  You must select profiles from the Profiles menu if you want shredding enabled for them.

This dialog will not be displayed again.</source>
        <translation>Es gibt mehr als ein Mozilla-Profil (Netscape oder Firefox). Nur was im Menü „Profile“ ausgewählt ist, wird geschreddert.

Dieser Hinweis erscheint nicht noch einmal.</translation>
    </message>
    <message>
        <source>Enabled and waiting for the first timer event to occur...</source>
        <translation>Eingeschaltet; die erste Überprüfung steht noch aus.</translation>
    </message>
    <message>
        <source>Not enabled. Use preferences to enable...</source>
        <translation>Nicht eingeschaltet; dies geschieht in den Einstellungen.</translation>
    </message>
    <message>
        <source>A supported browser or email application is running...</source>
        <translation>Ein unterstützter Browser oder ein E-Mail-Programm läuft.</translation>
    </message>
    <message>
        <source>All supported browser or email application have quit...</source>
        <translation>Alle unterstützten Browser und E-Mail-Programme sind beendet.</translation>
    </message>
    <message>
        <source>No supported applications are running...</source>
        <translation>Keine unterstützte Anwendung läuft.</translation>
    </message>
    <message>
        <source>Multiple Mozilla Profiles</source>
        <translation>Mehrere Mozilla-Profile</translation>
    </message>
</context>
</TS>
