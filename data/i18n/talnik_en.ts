<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="cs">
<context>
    <name>Texts</name>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>&amp;Storno</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>&amp;Ano</source>
        <translation>&amp;Yes</translation>
    </message>
    <message>
        <source>&amp;Ne</source>
        <translation>&amp;No</translation>
    </message>
    <message>
        <source>Větší</source>
        <translation>Larger</translation>
    </message>
    <message>
        <source>menší</source>
        <translation>smaller</translation>
    </message>
    <message>
        <source>Mažu</source>
        <translation>Deleting</translation>
    </message>
    <message>
        <source>prázdný řádek</source>
        <translation>empty line</translation>
    </message>
    <message>
        <source>Otevřít</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>Uložit</source>
        <translation>Save</translation>
    </message>
</context>
</TS>
