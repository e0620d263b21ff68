// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/characterset_p.h"

#include "support/randomcases.h"

#include <QRegExp>
#include <QtTest>

#include <bitset>

using label::CharacterSet;

Q_DECLARE_METATYPE(label::CharacterSet)

namespace {

using Bits = std::bitset<CharacterSet::lastUnit + 1>;

Bits bitsOf(const CharacterSet &set)
{
    Bits bits;
    for (uint unit = 0; unit <= CharacterSet::lastUnit; ++unit)
        bits.set(unit, set.contains(unit));
    return bits;
}

Bits bitsOf(CharacterSet::Range range)
{
    Bits bits;
    for (uint unit = range.first; unit <= range.last; ++unit)
        bits.set(unit);
    return bits;
}

CharacterSet::Range randomRange(Random &random)
{
    static const QList<int> sizes = {1, 1, 2, 30, 3000, 40000};
    const uint first = static_cast<uint>(random.below(CharacterSet::lastUnit + 1));
    const uint size = 1 + static_cast<uint>(random.below(random.pick(sizes)));
    return {first, qMin(first + size - 1, CharacterSet::lastUnit)};
}

/// What is wrong with the order of the ranges; empty for nothing.
QString disorder(const CharacterSet &set)
{
    for (std::size_t index = 0; index < set.ranges().size(); ++index) {
        const CharacterSet::Range range = set.ranges()[index];
        if (range.first > range.last)
            return QStringLiteral("range %1 is reversed").arg(index);
        if (index > 0 && range.first <= set.ranges()[index - 1].last + 1)
            return QStringLiteral("range %1 touches the one before").arg(index);
    }
    return QString();
}

} // namespace

class TestCharacterSet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isEmptyAtFirst();
    void complementsTheEnds();
    void holdsMarks();
    void agreesWithBits();
    void meansWhatEscapesMean_data();
    void meansWhatEscapesMean();
};

void TestCharacterSet::isEmptyAtFirst()
{
    const CharacterSet set;
    QVERIFY(set.isEmpty());
    QCOMPARE(set.size(), 0);
    QVERIFY(!set.contains(0));
    QVERIFY(set.complement() == CharacterSet::all());
    QVERIFY(CharacterSet::all().complement().isEmpty());
}

void TestCharacterSet::complementsTheEnds()
{
    CharacterSet ends(0);
    ends.add(CharacterSet(CharacterSet::lastUnit));
    QVERIFY(ends.complement() == CharacterSet(1, CharacterSet::lastUnit - 1));
    QVERIFY(ends.complement().complement() == ends);
}

void TestCharacterSet::holdsMarks()
{
    constexpr uint mark = CharacterSet::lastUnit + 1;
    const CharacterSet marks(mark);
    QVERIFY(marks.contains(mark));
    QVERIFY(!marks.contains(mark - 1));
    QVERIFY(!CharacterSet::all().contains(mark));
    QVERIFY(marks.complement() == CharacterSet::all());
}

void TestCharacterSet::agreesWithBits()
{
    Random random(11);
    int joined = 0;
    for (int round = 0; round < 60; ++round) {
        CharacterSet set;
        Bits bits;
        const int count = 1 + random.below(12);
        for (int index = 0; index < count; ++index) {
            // Neighbours must become one range.
            const CharacterSet::Range range = randomRange(random);
            CharacterSet part(range.first, range.last);
            if (random.chance(50) && range.last < CharacterSet::lastUnit)
                part.add(CharacterSet(range.last + 1));
            set.add(part);
            for (const CharacterSet::Range one : part.ranges())
                bits |= bitsOf(one);
        }
        joined += static_cast<int>(set.ranges().size()) < count;
        QVERIFY2(disorder(set).isEmpty(), qPrintable(disorder(set)));
        QVERIFY(bitsOf(set) == bits);
        QCOMPARE(set.size(), static_cast<int>(bits.count()));
        QVERIFY2(disorder(set.complement()).isEmpty(), qPrintable(disorder(set.complement())));
        QVERIFY(bitsOf(set.complement()) == ~bits);
        QVERIFY(set.complement().complement() == set);
    }
    QVERIFY2(joined > 10, qPrintable(QString::number(joined)));
}

void TestCharacterSet::meansWhatEscapesMean_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<CharacterSet>("set");

    QTest::newRow("digits") << "\\d" << CharacterSet::digits();
    QTest::newRow("no digits") << "\\D" << CharacterSet::digits().complement();
    QTest::newRow("words") << "\\w" << CharacterSet::words();
    QTest::newRow("no words") << "\\W" << CharacterSet::words().complement();
    QTest::newRow("blanks") << "\\s" << CharacterSet::blanks();
    QTest::newRow("no blanks") << "\\S" << CharacterSet::blanks().complement();
    QTest::newRow("any character") << "." << CharacterSet::all();
}

void TestCharacterSet::meansWhatEscapesMean()
{
    QFETCH(QString, pattern);
    QFETCH(CharacterSet, set);

    const QRegExp expression(pattern, Qt::CaseSensitive, QRegExp::RegExp);
    for (uint unit = 0; unit <= CharacterSet::lastUnit; ++unit)
        QVERIFY2(set.contains(unit) == expression.exactMatch(QString(QChar(unit))), qPrintable(QString::number(unit)));
}

QTEST_GUILESS_MAIN(TestCharacterSet)
#include "tst_characterset.moc"
