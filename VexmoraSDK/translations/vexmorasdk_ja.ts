<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>VexmoraSDK</name>
    <message>
        <source>Advertisement</source>
        <extracomment>What screen readers say before the texts of an ad.</extracomment>
        <translation>広告</translation>
    </message>
    <message>
        <source>Close advertisement</source>
        <extracomment>What screen readers say of the close button of an interstitial ad.</extracomment>
        <translation>広告を閉じる</translation>
    </message>
</context>
</TS>
