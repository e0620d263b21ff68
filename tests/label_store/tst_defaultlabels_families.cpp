// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/defaultlabelstest.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_store/labelstore.h"

#include <QtTest>

using label::LabelInterface;

/// Tests the rows that a label makes for addresses of a dynamic family.
class DefaultLabelsFamiliesTest : public DefaultLabelsTest
{
    Q_OBJECT

private Q_SLOTS:
    void dynamicFamilies_data();
    void dynamicFamilies();
    void driversWithoutFamiliesRefuse_data();
    void driversWithoutFamiliesRefuse();
    void aDataBlockFromRecognitionToConversion();
    void aFamilyInSmallLettersFindsNoTemplate();
    void dynamicRowsGoWithTheirLabel();
};

void DefaultLabelsFamiliesTest::dynamicFamilies_data()
{
    QTest::addColumn<QString>("driverName");
    QTest::addColumn<QString>("templatePattern");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("symbol");
    QTest::newRow("data blocks over Ethernet") << "ISO on TCP"
                                               << "DB_DBW"
                                               << "DB12.DBW4"
                                               << "DB12.DBW";
    QTest::newRow("data blocks over the multi-point interface") << "Simatic S7-300 MPI"
                                                                << "DB_DBX_BYTE"
                                                                << "DB12.DBX4"
                                                                << "DB12.DBX";
    QTest::newRow("data files on a serial line") << "MicroLogix DF1 RS232"
                                                 << "NUMBER"
                                                 << "N9:5"
                                                 << "N9:";
    QTest::newRow("data files over Ethernet") << "MicroLogix Ethernet"
                                              << "FLOAT"
                                              << "F12:5"
                                              << "F12:";
    QTest::newRow("data files of the large controller") << "PLC5 DF1 CRC"
                                                        << "TIMER_ACC"
                                                        << "T9:1.ACC"
                                                        << "T9:";
    QTest::newRow("parameters of a drive") << "LustBus ServoC/CDE Series"
                                           << "INT16_NO_IDX"
                                           << "INT16:1:2"
                                           << "INT16:1:";
    QTest::newRow("memory of modules") << "FX5U Ethernet"
                                       << "MOD_ACCESS_DEV"
                                       << "U1\\G100"
                                       << "U1\\G";
}

void DefaultLabelsFamiliesTest::dynamicFamilies()
{
    QFETCH(QString, driverName);
    QFETCH(QString, templatePattern);
    QFETCH(QString, address);
    QFETCH(QString, symbol);
    Row family;
    family.pattern = templatePattern;
    family.prefixSymbol = QStringLiteral("family");
    writeDatabase({driver(driverName, {Row(), family})});
    LabelInterface *made = build(driverName);
    QVERIFY(made);
    QCOMPARE(made->addressValidation(QStringLiteral("3-") + address, -1), -1);
    QCOMPARE(made->addressValidation(address, -1), 2);
    QCOMPARE(made->addressValidation(address, -1), 2);
    QCOMPARE(made->addressValidation(QStringLiteral("3-") + address, -1), 2);
    QCOMPARE(made->countBitTypes(), 3);
    QCOMPARE(made->getPrefixSymbolByTypeID(2), symbol);
    QCOMPARE(made->getEditUsedPrifixSymbolByTypeId(2), QStringLiteral("family"));
}

void DefaultLabelsFamiliesTest::driversWithoutFamiliesRefuse_data()
{
    QTest::addColumn<QString>("driverName");
    QTest::newRow("a driver without a family") << "A";
    QTest::newRow("the name of a driver with one, in another case") << "ISO ON TCP";
}

void DefaultLabelsFamiliesTest::driversWithoutFamiliesRefuse()
{
    QFETCH(QString, driverName);
    writeDatabase({driver(driverName, {row("DB_DBW", 2, "DB"), row("NUMBER", 2, "N"), row("MOD_ACCESS_DEV", 2, "U"),
                                       row("INT16_NO_IDX", 2, "P")})});
    LabelInterface *made = build(driverName);
    QVERIFY(made);
    for (const char *address : {"DB12.DBW4", "N9:5", "U1\\G100", "INT16:1:2"})
        QCOMPARE(made->addressValidation(QLatin1String(address), -1), -1);
    QCOMPARE(made->countBitTypes(), 4);
}

void DefaultLabelsFamiliesTest::aDataBlockFromRecognitionToConversion()
{
    Row bits = row("DB_DBX", 0, "DB", "dot-oct:r");
    bits.dataSize = 1;
    Row bytes = row("DB_DBX_BYTE", 1, "DB");
    bytes.dataSize = 1;
    writeDatabase({driver(QStringLiteral("ISO on TCP"), {bits, bytes, row("DB_DBW", 2, "DB")})});
    LabelInterface *made = build(QStringLiteral("ISO on TCP"));
    QVERIFY(made);

    QString prefix;
    QString range;
    QVERIFY(!made->parseAddress(QStringLiteral("DB12.DBW4"), prefix, range));
    QCOMPARE(made->addressValidation(QStringLiteral("DB12.DBW4"), -1), 3);
    QCOMPARE(made->addressValidation(QStringLiteral("DB12.DBW6"), -1), 3);
    QVERIFY(made->parseAddress(QStringLiteral("DB12.DBW4"), prefix, range));
    QCOMPARE(prefix, QStringLiteral("DB"));
    QCOMPARE(range, QStringLiteral("12.DBW4"));
    QCOMPARE(made->addressRange(3, QStringLiteral("DB12.DBW4")), 4);
    QCOMPARE(addresses(made->makeContinueCommand(3, command(QStringLiteral("DB12.DBW4"), 2), 2)),
             (QStringList{"DB12.DBW4", "DB12.DBW5"}));
    QCOMPARE(shortForms(made->makeBlockCommand(2, 3, 4, 8)), QStringList{"2-DB12.DBW4 2 8"});

    QCOMPARE(made->addressValidation(QStringLiteral("DB12.DBX10.3"), 0), 4);
    QCOMPARE(made->addressValidation(QStringLiteral("4-DB12.DBX10.7"), 0), 4);
    QCOMPARE(made->addressRange(4, QStringLiteral("DB12.DBX10.3")), 10);
    QCOMPARE(made->bitOffset(4, QStringLiteral("DB12.DBX10.3")), 3);

    int typeIndex = -1;
    QCOMPARE(
        made->convertBitCommandToRegisterCommand(command(QStringLiteral("DB12.DBX10.3"), 0), typeIndex).stringKey(),
        QStringLiteral("DB12.DBX10_1_1"));
    QCOMPARE(typeIndex, 5);
    QCOMPARE(made->countBitTypes(), 6);
    QCOMPARE(made->getPrefixSymbolByTypeID(5), QStringLiteral("DB12.DBX"));
    QCOMPARE(made->addressValidation(QStringLiteral("DB12xDBX10.3"), -1), -1);
}

void DefaultLabelsFamiliesTest::aFamilyInSmallLettersFindsNoTemplate()
{
    const QString name = QStringLiteral("LustBus ServoC/CDE Series");
    writeDatabase({driver(name, {row("INT16_NO_IDX", 2, "P")})});
    LabelInterface *made = build(name);
    QVERIFY(made);
    const LogRecorder log;
    QCOMPARE(made->addressValidation(QStringLiteral("int16:1:2"), -1), -1);
    QCOMPARE(made->countBitTypes(), 1);
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsFamiliesTest::dynamicRowsGoWithTheirLabel()
{
    const QString name = QStringLiteral("ISO on TCP");
    writeDatabase({driver(name, {row("DB_DBW", 2, "DB")})});
    LabelInterface *made = build(name);
    QVERIFY(made);
    QCOMPARE(made->addressValidation(QStringLiteral("DB12.DBW4"), -1), 1);
    QCOMPARE(build(name)->countBitTypes(), 2);
    label::freeLabel(name);
    LabelInterface *anew = build(name);
    QVERIFY(anew);
    QCOMPARE(anew->countBitTypes(), 1);
    QString prefix;
    QString range;
    QVERIFY(!anew->parseAddress(QStringLiteral("DB12.DBW4"), prefix, range));
}

QTEST_GUILESS_MAIN(DefaultLabelsFamiliesTest)

#include "tst_defaultlabels_families.moc"
