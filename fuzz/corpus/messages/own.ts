<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>F/Captions</name>
    <message>
        <source>Open</source>
        <comment>F.A</comment>
        <translation>Auf<byte value="x7"/></translation>
    </message>
</context>
<context>
    <name>F</name>
    <message>
        <source>Open</source>
        <translation type="unfinished"><numerusform>a</numerusform><numerusform>b</numerusform></translation>
    </message>
</context>
</TS>
