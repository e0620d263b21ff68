// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/multiplerule.h"

#include <QTest>

using label::MultipleRule;

/// Tests what a rule says about the register of a bit.
class TestMultipleRuleRegisters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void registerSymbol_data();
    void registerSymbol();
    void alignment_data();
    void alignment();
    void contrivedTails_data();
    void contrivedTails();
    void optimisingAndConverting_data();
    void optimisingAndConverting();
};

void TestMultipleRuleRegisters::registerSymbol_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("symbol");

    QTest::newRow("a symbol behind an alignment") << "union-dec:rm16_D"
                                                  << "D";
    QTest::newRow("a symbol keeps its case") << "union-oct:rm8a1_Dx"
                                             << "Dx";
    QTest::newRow("a symbol behind a plain r") << "dot-f:r_W"
                                               << "W";
    QTest::newRow("a symbol behind a bare colon") << "dot-f:_W"
                                                  << "W";
    QTest::newRow("no symbol gives the default") << "dot-f:r"
                                                 << "default";
    QTest::newRow("of three parts the second is the symbol") << "dot-f:r_W_X"
                                                             << "W";
    QTest::newRow("an underscore at the end names an empty symbol") << "dot-f:r_"
                                                                    << "";
    QTest::newRow("two underscores name an empty symbol") << "dot-f:r__W"
                                                          << "";
    QTest::newRow("underscores of the other words name nothing") << "a_b-c_d:r"
                                                                 << "default";
    QTest::newRow("a plain rule gives the default") << "m8_D"
                                                    << "default";
    QTest::newRow("an empty rule gives the default") << ""
                                                     << "default";
    QTest::newRow("the shape inside a plain text names the symbol") << "m8 dot-f:r_W"
                                                                    << "W";
}

void TestMultipleRuleRegisters::registerSymbol()
{
    QFETCH(QString, text);
    QTEST(MultipleRule(text).registerSymbol(QStringLiteral("default")), "symbol");
}

void TestMultipleRuleRegisters::alignment_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("aligned");
    QTest::addColumn<QList<int>>("others");
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("countsBits");

    const QList<int> of8 = {0, 8, 16, 24, 64, -8};
    const QList<int> notOf8 = {1, 4, 7, 9, 12, 65, -1, -7};
    const QList<int> of8Plus1 = {1, 9, 17, 65, -7};
    const QList<int> notOf8Plus1 = {0, 2, 8, 10, 16, 64, -1, -8};
    const QList<int> of16 = {0, 16, 32, 64, -16};
    const QList<int> notOf16 = {1, 8, 15, 17, 24, 65, -1, -8};
    const QList<int> of16Plus1 = {1, 17, 33, 65, -15};
    const QList<int> notOf16Plus1 = {0, 2, 9, 16, 18, 25, 64, -1, -7};
    const QList<int> of64Plus1 = {1, 65, 129, -63};
    const QList<int> notOf64Plus1 = {0, 2, 9, 17, 33, 64, 66, -1, -15};
    const QList<int> any = {0, 1, 2, 3, 5, 7, 8, 9, 16, 17, 64, 65, -1, -3, -8};
    const QList<int> none;

    QTest::newRow("m8") << "m8" << of8 << notOf8 << 8 << true;
    QTest::newRow("m8 in capitals") << "M8" << of8 << notOf8 << 8 << true;
    QTest::newRow("m8a1") << "m8a1" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("m8a1 in capitals") << "M8A1" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("m8add1") << "m8add1" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("m8add1 in mixed case") << "M8Add1" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("m16") << "m16" << of16 << notOf16 << 16 << true;
    QTest::newRow("m16 in capitals") << "M16" << of16 << notOf16 << 16 << true;
    QTest::newRow("m64a1 has size 1 and counts no bits") << "m64a1" << of64Plus1 << notOf64Plus1 << 1 << false;
    QTest::newRow("m64add1") << "m64add1" << of64Plus1 << notOf64Plus1 << 1 << false;
    QTest::newRow("m64add1 in capitals") << "M64ADD1" << of64Plus1 << notOf64Plus1 << 1 << false;
    QTest::newRow("m16a1") << "m16a1" << of16Plus1 << notOf16Plus1 << 16 << true;
    QTest::newRow("m16add1") << "m16add1" << of16Plus1 << notOf16Plus1 << 16 << true;
    QTest::newRow("m16add1 in mixed case") << "m16ADD1" << of16Plus1 << notOf16Plus1 << 16 << true;

    QTest::newRow("an empty text aligns nothing") << "" << any << none << 1 << false;
    QTest::newRow("a plain keyword has to be the whole text") << "m8x" << any << none << 1 << false;
    QTest::newRow("a blank behind a plain keyword spoils it") << "m8 " << any << none << 1 << false;
    QTest::newRow("m64 is no keyword") << "m64" << any << none << 1 << false;
    QTest::newRow("m32 is no keyword") << "m32" << any << none << 1 << false;
    QTest::newRow("the tail test is no plain keyword") << "rm8" << any << none << 1 << false;
    QTest::newRow("a script's file name is no keyword") << "F>m8" << any << none << 1 << false;
    QTest::newRow("a plain text with the shape inside") << "m8 dot-f:r" << any << none << 1 << false;
    QTest::newRow("an aligned tail inside a plain text") << "x dot-f:rm8" << any << none << 1 << false;
    QTest::newRow("a nearly compound text") << "dot-f" << any << none << 1 << false;

    QTest::newRow("tail :rm8") << "dot-f:rm8" << of8 << notOf8 << 8 << true;
    QTest::newRow("tail :rm8 in capitals") << "DOT-F:RM8" << of8 << notOf8 << 8 << true;
    QTest::newRow("tail :rm8 with a symbol") << "dot-f:rm8_D" << of8 << notOf8 << 8 << true;
    QTest::newRow("tail :rm8 with a letter other than a behind it") << "dot-f:rm8b" << of8 << notOf8 << 8 << true;
    QTest::newRow("tail :rm80 holds rm8") << "dot-f:rm80" << of8 << notOf8 << 8 << true;
    QTest::newRow("rm8 anywhere in the tail") << "dot-f:nrm8" << of8 << notOf8 << 8 << true;
    QTest::newRow("tail :rm8a1") << "dot-f:rm8a1" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("tail :rm8a1 in capitals") << "dot-f:RM8A1" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("tail :rm8a1 with a symbol") << "union-oct:rm8a1_D" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("tail :rm8a1 with more behind it") << "dot-f:rm8a1x" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("rm8a1 anywhere in the tail") << "dot-f:xrm8a1" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("tail :rm16") << "dot-f:rm16" << of16 << notOf16 << 16 << true;
    QTest::newRow("tail :rm16 with a symbol") << "union-dec:rm16_D" << of16 << notOf16 << 16 << true;
    QTest::newRow("rm16 anywhere in the tail") << "dot-f:nrm16" << of16 << notOf16 << 16 << true;
    QTest::newRow("tail :rm16a1") << "dot-f:rm16a1" << of16Plus1 << notOf16Plus1 << 16 << true;
    QTest::newRow("tail :rm16a1 with more behind it") << "dot-f:rm16a1x" << of16Plus1 << notOf16Plus1 << 16 << true;
    QTest::newRow("tail :rm16a1 in mixed case") << "dot-f:Rm16A1" << of16Plus1 << notOf16Plus1 << 16 << true;
    QTest::newRow("tail :rm64a1 has size 1 and counts no bits")
        << "dot-f:rm64a1" << of64Plus1 << notOf64Plus1 << 1 << false;
    QTest::newRow("tail :rm64a1 in capitals with more behind it")
        << "dot-f:RM64A1_D" << of64Plus1 << notOf64Plus1 << 1 << false;
    QTest::newRow("rm64a1 counts at the front of the tail only") << "dot-f:xrm64a1" << any << none << 1 << false;
    QTest::newRow("rm64 is no test") << "dot-f:rm64" << any << none << 1 << false;
    QTest::newRow("rm8a is neither kind") << "dot-f:rm8a" << any << none << 1 << false;
    QTest::newRow("rm8a2 is neither kind") << "dot-f:rm8a2" << any << none << 1 << false;
    QTest::newRow("rm8add1 is neither kind in a tail") << "dot-f:rm8add1" << any << none << 1 << false;
    QTest::newRow("rm16a is neither kind") << "dot-f:rm16a" << any << none << 1 << false;
    QTest::newRow("the plain keyword is no tail") << "dot-f:m8" << any << none << 1 << false;
    QTest::newRow("a tail that is just a colon") << "dot-f:" << any << none << 1 << false;
    QTest::newRow("a tail that only converts") << "dot-f:r" << any << none << 1 << false;
    QTest::newRow("keywords of the other words do not count") << "rm8-rm16:r" << any << none << 1 << false;
}

void TestMultipleRuleRegisters::alignment()
{
    QFETCH(QString, text);
    QFETCH(QList<int>, aligned);
    QFETCH(QList<int>, others);
    const MultipleRule rule(text);
    for (int value : aligned)
        QVERIFY2(rule.isAligned(value), QByteArray::number(value).constData());
    for (int value : others)
        QVERIFY2(!rule.isAligned(value), QByteArray::number(value).constData());
    QCOMPARE(rule.hasAlignment(), !others.isEmpty());
    QTEST(rule.aligmentSize(), "size");
    QTEST(rule.countsBits(), "countsBits");
}

void TestMultipleRuleRegisters::contrivedTails_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("aligned");
    QTest::addColumn<QList<int>>("others");

    QTest::newRow("8 goes before 8 plus 1") << "dot-f:rm8a1rm8" << QList<int>{0, 8} << QList<int>{1, 9};
    QTest::newRow("8 goes before 16") << "dot-f:rm16rm8" << QList<int>{8, 16} << QList<int>{1, 4};
    QTest::newRow("8 goes before 64 plus 1") << "dot-f:rm64a1rm8" << QList<int>{8, 64} << QList<int>{1, 65};
    QTest::newRow("8 goes before 16 plus 1") << "dot-f:rm16a1rm8" << QList<int>{8, 16} << QList<int>{1, 17};
    QTest::newRow("8 plus 1 goes before 16") << "dot-f:rm16rm8a1" << QList<int>{1, 9} << QList<int>{0, 16};
    QTest::newRow("8 plus 1 goes before 64 plus 1") << "dot-f:rm64a1rm8a1" << QList<int>{1, 9} << QList<int>{0, 64};
    QTest::newRow("8 plus 1 goes before 16 plus 1") << "dot-f:rm16a1rm8a1" << QList<int>{9, 17} << QList<int>{0, 16};
    QTest::newRow("16 goes before 64 plus 1") << "dot-f:rm64a1rm16" << QList<int>{0, 16} << QList<int>{1, 65};
    QTest::newRow("16 goes before 16 plus 1") << "dot-f:rm16a1rm16" << QList<int>{0, 16} << QList<int>{1, 17};
    QTest::newRow("64 plus 1 goes before 16 plus 1") << "dot-f:rm64a1rm16a1" << QList<int>{1, 65} << QList<int>{17, 33};
    QTest::newRow("8 goes before all others")
        << "dot-f:rm64a1rm16a1rm16rm8a1rm8" << QList<int>{0, 8} << QList<int>{1, 9, 17, 65};
}

void TestMultipleRuleRegisters::contrivedTails()
{
    QFETCH(QString, text);
    QFETCH(QList<int>, aligned);
    QFETCH(QList<int>, others);
    const MultipleRule rule(text);
    for (int value : aligned)
        QVERIFY2(rule.isAligned(value), QByteArray::number(value).constData());
    for (int value : others)
        QVERIFY2(!rule.isAligned(value), QByteArray::number(value).constData());
}

void TestMultipleRuleRegisters::optimisingAndConverting_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("needOptimize");
    QTest::addColumn<bool>("canConvert");

    QTest::newRow("an empty text") << "" << true << true;
    QTest::newRow("n") << "n" << false << true;
    QTest::newRow("N") << "N" << false << true;
    QTest::newRow("any plain text that begins with n") << "nothing" << false << true;
    QTest::newRow("any plain text that begins with N") << "Nmore" << false << true;
    QTest::newRow("a plain keyword") << "m8" << true << true;
    QTest::newRow("an n in the middle of a plain text") << "m8n" << true << true;
    QTest::newRow("a blank in front of the n") << " n" << true << true;
    QTest::newRow("a script") << "F>n.js" << true << true;
    QTest::newRow("a nearly compound text that begins with n") << "nosep-dec" << false << true;
    QTest::newRow("a compound text that converts") << "dot-f:r" << false << true;
    QTest::newRow("a compound text that converts, in capitals") << "DOT-F:R" << false << true;
    QTest::newRow("a compound text that is optimised") << "dot-f:n" << true << false;
    QTest::newRow("a compound text that is optimised, in capitals") << "DOT-F:N" << true << false;
    QTest::newRow("a compound text that is optimised by more than n") << "dot-f:nrm8" << true << false;
    QTest::newRow("a compound text that converts with alignment") << "dot-f:rm16_D" << false << true;
    QTest::newRow("a compound text with a bare colon") << "dot-f:" << false << false;
    QTest::newRow("a compound text with another tail") << "dot-f:xr" << false << false;
    QTest::newRow("a compound text with n later in the tail") << "dot-f:rn" << false << true;
    QTest::newRow("a compound text that begins with n") << "nosep-dec:r" << false << true;
    QTest::newRow("a compound text that begins with n and is optimised") << "nosep-dec:n" << true << false;
    QTest::newRow("a plain text whose inner tail says n") << "x dot-f:n" << true << false;
    QTest::newRow("a plain text whose inner tail says r") << "x dot-f:r" << true << true;
    QTest::newRow("a plain text that begins with n with the shape inside") << "n dot-f:n" << false << false;
}

void TestMultipleRuleRegisters::optimisingAndConverting()
{
    QFETCH(QString, text);
    const MultipleRule rule(text);
    QTEST(rule.needOptimize(), "needOptimize");
    QTEST(rule.canConvertToRegister(), "canConvert");
}

QTEST_APPLESS_MAIN(TestMultipleRuleRegisters)

#include "tst_multiplerule_registers.moc"
