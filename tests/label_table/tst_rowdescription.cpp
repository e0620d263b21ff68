// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/rowdescription_p.h"

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include <QTest>

class TestRowDescription : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void example_data();
    void example();
    void formatName_data();
    void formatName();
    void familyTemplate_data();
    void familyTemplate();
    void dataTypeWord_data();
    void dataTypeWord();
    void radixRemark();
};

void TestRowDescription::example_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("example");
    QTest::newRow("behind e.g.") << "D: register, e.g. D100"
                                 << "D100";
    QTest::newRow("a full stop does not belong to it") << "D: register, e.g. D100."
                                                       << "D100";
    QTest::newRow("nor does a bracket") << "D (e.g. D100)"
                                        << "D100";
    QTest::newRow("up to the next blank") << "D, e.g. D100 or D200"
                                          << "D100";
    QTest::newRow("none: symbol and first number") << "data register"
                                                   << "D5";
    QTest::newRow("no description") << ""
                                    << "D5";
}

void TestRowDescription::example()
{
    QFETCH(QString, description);
    const LogRecorder log;
    Row made;
    made.description = description;
    made.start = QStringLiteral("5");
    QTEST(label::exampleAddress(made.formatter()), "example");
}

void TestRowDescription::formatName_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QString>("editorSymbol");
    QTest::addColumn<QString>("name");
    QTest::newRow("the form of the description") << "Dn.b: bit"
                                                 << "D"
                                                 << ""
                                                 << "Dn.b";
    QTest::newRow("no form: the symbol") << "bit of a register"
                                         << "D"
                                         << ""
                                         << "D";
    QTest::newRow("words before the colon are no form") << "bit of D: bit"
                                                        << "D"
                                                        << ""
                                                        << "D";
    QTest::newRow("a member of a family: its own symbol") << "DBn.DBWb: word"
                                                          << "DB1.DBW"
                                                          << "DB"
                                                          << "DB1.DBW";
    QTest::newRow("a member without a symbol: the form") << "Cf:n/DN: bit"
                                                         << ""
                                                         << "C"
                                                         << "Cf:n/DN";
    QTest::newRow("neither form nor symbol") << ""
                                             << ""
                                             << ""
                                             << "the format";
}

void TestRowDescription::formatName()
{
    QFETCH(QString, description);
    QFETCH(QString, symbol);
    QFETCH(QString, editorSymbol);
    const LogRecorder log;
    Row made;
    made.description = description;
    made.prefixSymbol = symbol;
    label::CommandFormatter formatter = made.formatter();
    formatter.setEditorPrefixSymbol(editorSymbol);
    QTEST(label::formatName(formatter), "name");
}

void TestRowDescription::familyTemplate_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("isTemplate");
    QTest::newRow("a plain name") << "DB_DBX" << true;
    QTest::newRow("a name with digits") << "INT32Q16_NO_IDX" << true;
    QTest::newRow("an expression") << "(D)(\\d+)" << false;
    QTest::newRow("no pattern") << "" << false;
}

void TestRowDescription::familyTemplate()
{
    QFETCH(QString, pattern);
    const LogRecorder log;
    Row made;
    made.pattern = pattern;
    QTEST(label::isFamilyTemplate(made.formatter()), "isTemplate");
}

void TestRowDescription::dataTypeWord_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("word");
    QTest::newRow("0") << 0 << "bit";
    QTest::newRow("1") << 1 << "byte";
    QTest::newRow("2") << 2 << "word";
    QTest::newRow("3") << 3 << "double word";
    QTest::newRow("4") << 4 << "quad word";
    QTest::newRow("5") << 5 << "text";
    QTest::newRow("no name") << 7 << "type 7";
    QTest::newRow("negative") << -1 << "type -1";
}

void TestRowDescription::dataTypeWord()
{
    QFETCH(int, type);
    QTEST(label::dataTypeWord(type), "word");
}

void TestRowDescription::radixRemark()
{
    QCOMPARE(label::radixRemark(10), QString());
    QCOMPARE(label::radixRemark(8), QStringLiteral(" (octal)"));
    QCOMPARE(label::radixRemark(16), QStringLiteral(" (hexadecimal)"));
    QCOMPARE(label::radixRemark(2), QStringLiteral(" (radix 2)"));
}

QTEST_GUILESS_MAIN(TestRowDescription)

#include "tst_rowdescription.moc"
