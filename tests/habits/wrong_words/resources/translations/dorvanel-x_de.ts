<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Window</name>
    <message>
        <source>&amp;One</source>
        <translation>A&amp;b</translation>
    </message>
    <message>
        <source>&amp;Two</source>
        <translation>&amp;B</translation>
    </message>
    <message>
        <source>Thr&amp;ee</source>
        <translation>Without</translation>
    </message>
</context>
<context>
    <name>Words</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 of %1</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n form</numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>This is translated elsewhere</source>
        <translation type="unfinished">Half done</translation>
    </message>
    <message>
        <source>Nobody says this</source>
        <translation>Any more</translation>
    </message>
</context>
</TS>
