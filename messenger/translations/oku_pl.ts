<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pl_PL" sourcelanguage="pl_PL">
<context>
    <name>Terminal</name>
    <message numerus="yes">
        <source>… (całość: %n znaków, zobacz /export)</source>
        <translation>
            <numerusform>… (całość: %n znak, zobacz /export)</numerusform>
            <numerusform>… (całość: %n znaki, zobacz /export)</numerusform>
            <numerusform>… (całość: %n znaków, zobacz /export)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>↑ %n wierszy wyżej, End wraca</source>
        <translation>
            <numerusform>↑ %n wiersz wyżej, End wraca</numerusform>
            <numerusform>↑ %n wiersze wyżej, End wraca</numerusform>
            <numerusform>↑ %n wierszy wyżej, End wraca</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>… i %n ustawień domyślnych: /get all, /get CZĘŚĆ</source>
        <translation>
            <numerusform>… i %n ustawienie domyślne: /get all, /get CZĘŚĆ</numerusform>
            <numerusform>… i %n ustawienia domyślne: /get all, /get CZĘŚĆ</numerusform>
            <numerusform>… i %n ustawień domyślnych: /get all, /get CZĘŚĆ</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n wierszy</source>
        <translation>
            <numerusform>%n wiersz</numerusform>
            <numerusform>%n wiersze</numerusform>
            <numerusform>%n wierszy</numerusform>
        </translation>
    </message>
</context>
</TS>
