<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="sk" sourcelanguage="cs">
<context>
    <name>Texts</name>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>&amp;Storno</source>
        <translation>&amp;Zrušiť</translation>
    </message>
    <message>
        <source>&amp;Ano</source>
        <translation>&amp;Áno</translation>
    </message>
    <message>
        <source>&amp;Ne</source>
        <translation>&amp;Nie</translation>
    </message>
    <message>
        <source>Větší</source>
        <translation>Väčšie</translation>
    </message>
    <message>
        <source>menší</source>
        <translation>menšie</translation>
    </message>
    <message>
        <source>Mažu</source>
        <translation>Mažem</translation>
    </message>
    <message>
        <source>prázdný řádek</source>
        <translation>prázdny riadok</translation>
    </message>
    <message>
        <source>Otevřít</source>
        <translation>Otvoriť</translation>
    </message>
    <message>
        <source>Uložit</source>
        <translation>Uložiť</translation>
    </message>
</context>
</TS>
