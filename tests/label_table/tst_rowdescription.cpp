// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/rowdescription_p.h"

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "zelmar_label/label_table/addressfamily.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QTest>

class TestRowDescription : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void example_data();
    void example();
    void exampleOfFamily();
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
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("example");
    const auto add = [](const char *name, const char *pattern, const char *symbol, const char *start, const char *rule,
                        const char *example) {
        QTest::newRow(name) << QString(QLatin1String(pattern)) << QString(QLatin1String(symbol))
                            << QString(QLatin1String(start)) << QString(QLatin1String(rule))
                            << QString(QLatin1String(example));
    };
    add("the shortest", "(D)(0*\\d{1,4})", "D", "0", "", "D0");
    add("the first number", "(D)(\\d{1,4})", "D", "5", "", "D5");
    add("a number of more digits than the shortest", "(D)(\\d{1,4})", "D", "100", "", "D100");
    add("an aligned number", "(M)(\\d+)", "M", "10", "m16", "M16");
    add("a fixed number of digits", "(1\\d{4})", "", "10001", "", "10001");
    add("the letters of the symbol", "([Tt][Uu]?)(\\d+)", "TU", "0", "", "TU0");
    add("a symbol that is no part of the address", "(X)(\\d+)", "Q", "0", "", "X0");
    add("text after the number", "(T4:)(\\d+)\\.ACC", "T4:", "0", "", "T4:0.ACC");
    add("no address: symbol and first number", "(D)([5-4])x{0", "D", "7", "", "D7");
}

void TestRowDescription::example()
{
    QFETCH(QString, pattern);
    QFETCH(QString, symbol);
    QFETCH(QString, start);
    QFETCH(QString, rule);
    const LogRecorder log;
    Row made;
    made.pattern = pattern;
    made.prefixSymbol = symbol;
    made.start = start;
    made.end = QStringLiteral("20000");
    made.multipleRule = rule;
    made.addressGroupIndex = symbol.isEmpty() ? 1 : 2;
    QTEST(label::exampleAddress(made.formatter(), {}), "example");
}

void TestRowDescription::exampleOfFamily()
{
    const LogRecorder log;
    Row made;
    made.pattern = QStringLiteral("BLOCK_W");
    made.prefixSymbol = QStringLiteral("DB");
    made.start = QStringLiteral("0");
    label::FamilyForm bits;
    bits.pattern = label::Pattern(QStringLiteral("(DB[1-9]\\.X)\\d+\\.[0-7]"));
    bits.base = QStringLiteral("BLOCK_X");
    label::FamilyForm words;
    words.pattern = label::Pattern(QStringLiteral("(DB[1-9]\\.([BW]))\\d+"));
    words.base = QStringLiteral("BLOCK_");
    words.hasElementInBase = true;
    QCOMPARE(label::exampleAddress(made.formatter(), {{&bits, 0}, {&words, 0}}), QStringLiteral("DB1.W0"));
    QCOMPARE(label::exampleAddress(made.formatter(), {}), QStringLiteral("DB0"));
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
    QTEST(made.formatter().isFamilyTemplate(), "isTemplate");
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
