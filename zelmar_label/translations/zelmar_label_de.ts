<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_GB">
<context>
    <name>AddMultipleTagsPanel</name>
    <message>
        <source>Add Multiple Tags Panel</source>
        <translation>Mehrere Variablen anlegen</translation>
    </message>
    <message>
        <source>Add Multiple Tags</source>
        <translation>Mehrere Variablen anlegen</translation>
    </message>
    <message>
        <source>Sequential:</source>
        <translation>Fortlaufend:</translation>
    </message>
    <message>
        <source>Same as PLC address:</source>
        <translation>Wie die SPS-Adresse:</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head&gt;&lt;meta name=&quot;qrichtext&quot; content=&quot;1&quot; /&gt;&lt;style type=&quot;text/css&quot;&gt;
p, li { white-space: pre-wrap; }
&lt;/style&gt;&lt;/head&gt;&lt;body style=&quot; font-family:&apos;PMingLiU&apos;; font-size:11pt; font-weight:400; font-style:normal;&quot;&gt;
&lt;p style=&quot;-qt-paragraph-type:empty; margin-top:0px; margin-bottom:0px; margin-left:0px; margin-right:0px; -qt-block-indent:0; text-indent:0px;&quot;&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head&gt;&lt;meta name=&quot;qrichtext&quot; content=&quot;1&quot; /&gt;&lt;style type=&quot;text/css&quot;&gt;
p, li { white-space: pre-wrap; }
&lt;/style&gt;&lt;/head&gt;&lt;body style=&quot; font-family:&apos;PMingLiU&apos;; font-size:11pt; font-weight:400; font-style:normal;&quot;&gt;
&lt;p style=&quot;-qt-paragraph-type:empty; margin-top:0px; margin-bottom:0px; margin-left:0px; margin-right:0px; -qt-block-indent:0; text-indent:0px;&quot;&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Prefix: </source>
        <translation>Präfix: </translation>
    </message>
    <message>
        <source>T</source>
        <translation>T</translation>
    </message>
    <message>
        <source>Suffix: </source>
        <translation>Suffix: </translation>
    </message>
    <message>
        <source>Decimal Points: </source>
        <translation>Stellen: </translation>
    </message>
    <message>
        <source>Start at: </source>
        <translation>Startwert: </translation>
    </message>
    <message>
        <source>Address Increment: </source>
        <translation>Adressabstand: </translation>
    </message>
    <message>
        <source>Total Tags: </source>
        <translation>Anzahl: </translation>
    </message>
</context>
<context>
    <name>AddressDiagnosis</name>
    <message>
        <source>%1, yet labels take it unchecked</source>
        <translation>%1; Labels nehmen das trotzdem ungeprüft an</translation>
    </message>
    <message>
        <source>the address is empty</source>
        <translation>die Adresse ist leer</translation>
    </message>
    <message>
        <source>the station number in front of &quot;-&quot; is missing</source>
        <translation>vor „-“ fehlt die Stationsnummer</translation>
    </message>
    <message>
        <source>the station &quot;%1&quot; is no decimal number</source>
        <translation>die Station „%1“ ist keine Dezimalzahl</translation>
    </message>
    <message>
        <source>bit %1 is beyond the last bit of %2, %3</source>
        <translation>Bit %1 liegt hinter dem letzten Bit von %2, %3</translation>
    </message>
    <message>
        <source>%1 is a bit itself; the address ends before position %2</source>
        <translation>%1 ist selbst ein Bit; die Adresse endet vor Stelle %2</translation>
    </message>
    <message>
        <source>the bits of %1 cannot be addressed; the address ends before position %2</source>
        <translation>die Bits von %1 sind nicht adressierbar; die Adresse endet vor Stelle %2</translation>
    </message>
    <message>
        <source>%1 expects %2 at position %3, where the address ends</source>
        <translation>an Stelle %3, wo die Adresse endet, erwartet %1 %2</translation>
    </message>
    <message>
        <source>%1 expects %2 at position %3, not &quot;%4&quot;</source>
        <translation>an Stelle %3 erwartet %1 %2, nicht „%4“</translation>
    </message>
    <message>
        <source>no format begins with &quot;%1&quot;</source>
        <translation>kein Format beginnt mit „%1“</translation>
    </message>
    <message>
        <source>no bit format begins with &quot;%1&quot;</source>
        <translation>kein Bitformat beginnt mit „%1“</translation>
    </message>
    <message>
        <source>no register format begins with &quot;%1&quot;</source>
        <translation>kein Registerformat beginnt mit „%1“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; at position %2 should be &quot;%3&quot;: letter case counts</source>
        <translation>„%1“ an Stelle %2 müsste „%3“ sein: Groß- und Kleinschreibung zählt</translation>
    </message>
    <message>
        <source>there is a blank at position %1</source>
        <translation>an Stelle %1 steht ein Leerzeichen</translation>
    </message>
    <message>
        <source>the letter &quot;%1&quot; at position %2 should be the digit %3</source>
        <translation>der Buchstabe „%1“ an Stelle %2 müsste die Ziffer %3 sein</translation>
    </message>
    <message>
        <source>the digit %1 at position %2 should be the letter &quot;%3&quot;</source>
        <translation>die Ziffer %1 an Stelle %2 müsste der Buchstabe „%3“ sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; at position %2 only looks like &quot;%3&quot;</source>
        <translation>„%1“ an Stelle %2 sieht nur aus wie „%3“</translation>
    </message>
    <message>
        <source>%1 at position %2 is no octal digit; the numbers of %3 are octal</source>
        <translation>%1 an Stelle %2 ist keine Oktalziffer; die Nummern von %3 sind oktal</translation>
    </message>
    <message>
        <source>%1 at position %2 is no digit of radix %4, in which the numbers of %3 are written</source>
        <translation>%1 an Stelle %2 ist keine Ziffer zur Basis %4, in der die Nummern von %3 geschrieben sind</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing at position %2</source>
        <translation>an Stelle %2 fehlt „%1“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; at position %2 should be &quot;%3&quot;</source>
        <translation>„%1“ an Stelle %2 müsste „%3“ sein</translation>
    </message>
    <message>
        <source>number %1 is above %2&apos;s last, %3</source>
        <translation>Nummer %1 liegt über der letzten von %2, %3</translation>
    </message>
    <message>
        <source>number %1 is below %2&apos;s first, %3</source>
        <translation>Nummer %1 liegt unter der ersten von %2, %3</translation>
    </message>
    <message>
        <source>number %1 is too long; %2&apos;s last is %3</source>
        <translation>Nummer %1 ist zu lang; die letzte von %2 ist %3</translation>
    </message>
    <message>
        <source>the limits of %1 in the driver database, &quot;%2&quot; and &quot;%3&quot;, are no numbers of its radix</source>
        <translation>die Grenzen von %1 in der Treiberdatenbank, „%2“ und „%3“, sind keine Zahlen seiner Basis</translation>
    </message>
    <message>
        <source>%1 has no number %2</source>
        <translation>%1 hat keine Nummer %2</translation>
    </message>
    <message>
        <source>number %1 is not aligned as %2 demands</source>
        <translation>Nummer %1 ist nicht so ausgerichtet, wie %2 es verlangt</translation>
    </message>
    <message>
        <source>%1 plus %2</source>
        <translation>%1 plus %2</translation>
    </message>
    <message>
        <source>number %1 is not a multiple of %2</source>
        <translation>Nummer %1 ist kein Vielfaches von %2</translation>
    </message>
    <message>
        <source>number %1 is not a multiple of %2; %3 is</source>
        <translation>Nummer %1 ist kein Vielfaches von %2; %3 ist eines</translation>
    </message>
    <message>
        <source>number %1 is not a multiple of %2; %3 and %4 are</source>
        <translation>Nummer %1 ist kein Vielfaches von %2; %3 und %4 sind es</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is the name of a family of formats and no address; the family is %2</source>
        <translation>„%1“ ist der Name einer Formatfamilie und keine Adresse; die Familie ist %2</translation>
    </message>
    <message>
        <source>%1 is new, and is recognised only without a station in front</source>
        <translation>%1 ist neu und wird nur ohne vorangestellte Station erkannt</translation>
    </message>
    <message>
        <source>no format of the %1 family takes &quot;%2&quot;</source>
        <translation>kein Format der Familie %1 nimmt „%2“ an</translation>
    </message>
    <message>
        <source>no format of the %1 family takes &quot;%2&quot;; one is %3</source>
        <translation>kein Format der Familie %1 nimmt „%2“ an; eines ist %3</translation>
    </message>
    <message>
        <source>%1 number %2 is too high; the last is %3</source>
        <translation>%1-Nummer %2 ist zu hoch; die letzte ist %3</translation>
    </message>
    <message>
        <source>%1 number %2 is too low; the first is %3</source>
        <translation>%1-Nummer %2 ist zu niedrig; die erste ist %3</translation>
    </message>
    <message>
        <source>%1 is a bit, not a register</source>
        <translation>%1 ist ein Bit, kein Register</translation>
    </message>
    <message>
        <source>%1 is a byte, not a bit</source>
        <translation>%1 ist ein Byte, kein Bit</translation>
    </message>
    <message>
        <source>%1 is a word, not a bit</source>
        <translation>%1 ist ein Wort, kein Bit</translation>
    </message>
    <message>
        <source>%1 is a double word, not a bit</source>
        <translation>%1 ist ein Doppelwort, kein Bit</translation>
    </message>
    <message>
        <source>%1 is a quad word, not a bit</source>
        <translation>%1 ist ein Vierfachwort, kein Bit</translation>
    </message>
    <message>
        <source>%1 is a text, not a bit</source>
        <translation>%1 ist ein Text, kein Bit</translation>
    </message>
    <message>
        <source>%1 is a register, not a bit</source>
        <translation>%1 ist ein Register, kein Bit</translation>
    </message>
    <message>
        <source>the format</source>
        <translation>das Format</translation>
    </message>
    <message>
        <source>%1 (octal)</source>
        <translation>%1 (oktal)</translation>
    </message>
    <message>
        <source>%1 (hexadecimal)</source>
        <translation>%1 (hexadezimal)</translation>
    </message>
    <message>
        <source>%1 (radix %2)</source>
        <translation>%1 (Basis %2)</translation>
    </message>
    <message>
        <source>any character</source>
        <translation>ein beliebiges Zeichen</translation>
    </message>
    <message>
        <source>one of &quot;%1&quot;</source>
        <translation>eines von „%1“</translation>
    </message>
    <message>
        <source>&quot;%1&quot;</source>
        <translation>„%1“</translation>
    </message>
    <message>
        <source>the end of the address</source>
        <translation>das Ende der Adresse</translation>
    </message>
    <message>
        <source>a hexadecimal digit</source>
        <translation>eine Hexadezimalziffer</translation>
    </message>
    <message>
        <source>a digit</source>
        <translation>eine Ziffer</translation>
    </message>
    <message>
        <source>a digit from %1 to %2</source>
        <translation>eine Ziffer von %1 bis %2</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>all but the last of a list of alternatives</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 or %2</source>
        <comment>the last of a list of alternatives</comment>
        <translation>%1 oder %2</translation>
    </message>
    <message>
        <source>%1 is longer; the address ends at position %2</source>
        <translation>%1 ist länger; die Adresse endet an Stelle %2</translation>
    </message>
    <message>
        <source>%1 has no &quot;%2&quot; at position %3</source>
        <translation>%1 hat kein „%2“ an Stelle %3</translation>
    </message>
</context>
<context>
    <name>AddressPicker</name>
    <message>
        <source>No matched type!</source>
        <translation>Kein passendes Format!</translation>
    </message>
    <message>
        <source>Form</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Matched Format:</source>
        <translation>Passende Formate:</translation>
    </message>
    <message>
        <source>Data Type</source>
        <translation>Datentyp</translation>
    </message>
    <message>
        <source>Station Number</source>
        <translation>Stationsnummer</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Länge</translation>
    </message>
</context>
<context>
    <name>SimpleAddressPicker</name>
    <message>
        <source>Form</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
</context>
<context>
    <name>TagSystem</name>
    <message>
        <source>Tag Error</source>
        <translation>Variablenfehler</translation>
    </message>
    <message>
        <source>Current project point is null!</source>
        <translation>Es gibt kein aktuelles Projekt!</translation>
    </message>
    <message>
        <source>Database Error</source>
        <translation>Datenbankfehler</translation>
    </message>
    <message>
        <source>TagSystem::init() tag database not exist </source>
        <translation>TagSystem::init(): Die Variablendatenbank gibt es nicht </translation>
    </message>
    <message>
        <source>Unable to open default Tag database.</source>
        <translation>Die Variablendatenbank des Projekts lässt sich nicht öffnen.</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Unable to open Tag database.</source>
        <translation>Die Variablendatenbank lässt sich nicht öffnen.</translation>
    </message>
    <message>
        <source>Unable to create Tag database file. Please check for free space in the disk.</source>
        <translation>Die Datei der Variablendatenbank lässt sich nicht anlegen. Ist auf dem Datenträger noch Platz?</translation>
    </message>
    <message>
        <source>Unable to open database.</source>
        <translation>Die Datenbank lässt sich nicht öffnen.</translation>
    </message>
    <message>
        <source>Read Database error</source>
        <translation>Fehler beim Lesen der Datenbank</translation>
    </message>
    <message>
        <source>Insert tag error.</source>
        <translation>Fehler beim Anlegen der Variablen.</translation>
    </message>
    <message>
        <source>Modify tag error</source>
        <translation>Fehler beim Ändern der Variablen</translation>
    </message>
    <message>
        <source>Bit</source>
        <translation>Bit</translation>
    </message>
    <message>
        <source>INT(8)</source>
        <translation>INT(8)</translation>
    </message>
    <message>
        <source>UINT(8)</source>
        <translation>UINT(8)</translation>
    </message>
    <message>
        <source>INT(16)</source>
        <translation>INT(16)</translation>
    </message>
    <message>
        <source>UINT(16)</source>
        <translation>UINT(16)</translation>
    </message>
    <message>
        <source>INT(32)</source>
        <translation>INT(32)</translation>
    </message>
    <message>
        <source>UINT(32)</source>
        <translation>UINT(32)</translation>
    </message>
    <message>
        <source>FLOAT</source>
        <translation>Gleitkomma (32)</translation>
    </message>
    <message>
        <source>Ascii</source>
        <translation>Text (ASCII)</translation>
    </message>
    <message>
        <source>DOUBLE</source>
        <translation>Gleitkomma (64)</translation>
    </message>
    <message>
        <source>INT(64</source>
        <translation>INT(64)</translation>
    </message>
    <message>
        <source>UINT(64)</source>
        <translation>UINT(64)</translation>
    </message>
    <message>
        <source>Write Only</source>
        <translation>Nur schreiben</translation>
    </message>
    <message>
        <source>Read/Write</source>
        <translation>Lesen und schreiben</translation>
    </message>
</context>
</TS>
