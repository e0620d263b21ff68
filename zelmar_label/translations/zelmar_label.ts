<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" sourcelanguage="en_GB">
<context>
    <name>AddMultipleTagsPanel</name>
    <message>
        <source>Add Multiple Tags Panel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Multiple Tags</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sequential:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Same as PLC address:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head&gt;&lt;meta name=&quot;qrichtext&quot; content=&quot;1&quot; /&gt;&lt;style type=&quot;text/css&quot;&gt;
p, li { white-space: pre-wrap; }
&lt;/style&gt;&lt;/head&gt;&lt;body style=&quot; font-family:&apos;PMingLiU&apos;; font-size:11pt; font-weight:400; font-style:normal;&quot;&gt;
&lt;p style=&quot;-qt-paragraph-type:empty; margin-top:0px; margin-bottom:0px; margin-left:0px; margin-right:0px; -qt-block-indent:0; text-indent:0px;&quot;&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Prefix: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>T</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Suffix: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decimal Points: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start at: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Address Increment: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Total Tags: </source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AddressDiagnosis</name>
    <message>
        <source>%1, yet labels take it unchecked</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the address is empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the station number in front of &quot;-&quot; is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the station &quot;%1&quot; is no decimal number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>bit %1 is beyond the last bit of %2, %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is a bit itself; the address ends before position %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the bits of %1 cannot be addressed; the address ends before position %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 expects %2 at position %3, where the address ends</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 expects %2 at position %3, not &quot;%4&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no format begins with &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no bit format begins with &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no register format begins with &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; at position %2 should be &quot;%3&quot;: letter case counts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is a blank at position %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the letter &quot;%1&quot; at position %2 should be the digit %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the digit %1 at position %2 should be the letter &quot;%3&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; at position %2 only looks like &quot;%3&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 at position %2 is no octal digit; the numbers of %3 are octal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 at position %2 is no digit of radix %4, in which the numbers of %3 are written</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing at position %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; at position %2 should be &quot;%3&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>number %1 is above %2&apos;s last, %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>number %1 is below %2&apos;s first, %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>number %1 is too long; %2&apos;s last is %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the limits of %1 in the driver database, &quot;%2&quot; and &quot;%3&quot;, are no numbers of its radix</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has no number %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>number %1 is not aligned as %2 demands</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 plus %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>number %1 is not a multiple of %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>number %1 is not a multiple of %2; %3 is</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>number %1 is not a multiple of %2; %3 and %4 are</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is the name of a family of formats and no address; the family is %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is new, and is recognised only without a station in front</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no format of the %1 family takes &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no format of the %1 family takes &quot;%2&quot;; one is %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 number %2 is too high; the last is %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 number %2 is too low; the first is %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is a bit, not a register</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is a byte, not a bit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is a word, not a bit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is a double word, not a bit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is a quad word, not a bit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is a text, not a bit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is a register, not a bit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (octal)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (hexadecimal)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (radix %2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>any character</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>one of &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the end of the address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a hexadecimal digit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a digit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a digit from %1 to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>all but the last of a list of alternatives</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 or %2</source>
        <comment>the last of a list of alternatives</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is longer; the address ends at position %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has no &quot;%2&quot; at position %3</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AddressPicker</name>
    <message>
        <source>No matched type!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Matched Format:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Data Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Station Number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Length</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SimpleAddressPicker</name>
    <message>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>...</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TagSystem</name>
    <message>
        <source>Tag Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current project point is null!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Database Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TagSystem::init() tag database not exist </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unable to open default Tag database.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unable to open Tag database.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unable to create Tag database file. Please check for free space in the disk.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unable to open database.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read Database error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Insert tag error.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Modify tag error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>INT(8)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UINT(8)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>INT(16)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UINT(16)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>INT(32)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UINT(32)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FLOAT</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ascii</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DOUBLE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>INT(64</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UINT(64)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write Only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read/Write</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
