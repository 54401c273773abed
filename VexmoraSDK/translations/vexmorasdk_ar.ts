<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>VexmoraSDK</name>
    <message>
        <source>Advertisement</source>
        <extracomment>What screen readers say before the texts of an ad.</extracomment>
        <translation>إعلان</translation>
    </message>
    <message>
        <source>Close advertisement</source>
        <extracomment>What screen readers say of the close button of an interstitial ad.</extracomment>
        <translation>إغلاق الإعلان</translation>
    </message>
</context>
</TS>
