// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/filtertools.h"
#include "zelmar_label/tag_store/fuzzymatch_p.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QMultiHash>
#include <QRandomGenerator>
#include <QRegExp>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// The reference for the library's own search, for every text and every name.
QStringList filteredByExpression(const QString &text, const QStringList &names)
{
    if (text.isEmpty())
        return {};
    return names.filter(QRegExp(FilterTools::makefuzzypattern(text), Qt::CaseInsensitive, QRegExp::RegExp));
}

QString readable(const QString &text)
{
    QStringList codes;
    for (const QChar character : text)
        codes.append(QString::number(character.unicode(), 16));
    return codes.join(QLatin1Char(' '));
}

QStringList readable(const QStringList &texts)
{
    QStringList result;
    for (const QString &text : texts)
        result.append(readable(text));
    return result;
}

/// Empty when both searches agree, else their results.
QString disagreement(const QString &text, const QStringList &names)
{
    const QStringList expected = filteredByExpression(text, names);
    const QStringList found = label::FuzzyMatch(text).filter(names);
    if (found == expected)
        return QString();
    const QSet<QString> expectedSet(expected.begin(), expected.end());
    const QSet<QString> foundSet(found.begin(), found.end());
    return QStringLiteral("[%1]: missed {%2}, wrongly found {%3}")
        .arg(readable(text), readable((expectedSet - foundSet).values()).join(QLatin1String(", ")),
             readable((foundSet - expectedSet).values()).join(QLatin1String(", ")));
}

QString unit(ushort code)
{
    return QString(QChar(code));
}

QString codePoint(uint code)
{
    return QString::fromUcs4(&code, 1);
}

/// Makes random characters of one kind of text.
class Alphabet
{
public:
    enum Kind { Few, Ascii, Meta, LineEnds, Letters, Surrogates, Units, CodePoints };

    Alphabet(Kind kind, quint32 seed)
        : m_kind(kind)
        , m_random(seed)
    {
    }

    int below(int limit) { return static_cast<int>(m_random.bounded(quint32(limit))); }

    QString one()
    {
        switch (m_kind) {
        case Few:
            return oneOf(QStringLiteral("aAbB\\."));
        case Ascii:
            return unit(static_cast<ushort>(below(128)));
        case Meta:
            return oneOf(QStringLiteral("\\\\\\^$.|?*+()[]{}-,:!=<>dDsSwWbBxn0159aA "));
        case LineEnds:
            return oneOf(QString::fromUtf16(u"\n\r\t\v\f\u0085\u2028\u2029aB"));
        case Letters:
            return unit(static_cast<ushort>(0x80 + below(0x2000)));
        case Surrogates:
            return unit(static_cast<ushort>(below(4) == 0 ? 'a' : 0xD800 + below(0x800)));
        case Units:
            return unit(static_cast<ushort>(below(0x10000)));
        case CodePoints:
            return codePoint(static_cast<uint>(below(4) == 0 ? 0x10000 + below(0x100000) : 1 + below(0xD7FF)));
        }
        return QString();
    }

    QString text(int atLeast, int atMost)
    {
        QString result;
        const int length = atLeast + below(atMost - atLeast + 1);
        for (int i = 0; i < length; ++i)
            result += one();
        return result;
    }

    /// A name with most characters of `text` in order, in another case, with some lost or swapped.
    QString nameLike(const QString &text)
    {
        QString name = this->text(0, 3);
        for (const QChar character : text) {
            if (below(12) != 0)
                name += inAnyCase(character);
            if (below(3) == 0)
                name += this->text(0, 3);
        }
        return name;
    }

private:
    QString oneOf(const QString &characters) { return QString(characters.at(below(characters.size()))); }

    QString inAnyCase(QChar character)
    {
        switch (below(5)) {
        case 0:
            return QString(character.toUpper());
        case 1:
            return QString(character.toLower());
        case 2:
            return QString(character.toCaseFolded());
        case 3:
            return QString(character.toTitleCase());
        default:
            return QString(character);
        }
    }

    Kind m_kind;
    QRandomGenerator m_random;
};

} // namespace

Q_DECLARE_METATYPE(Alphabet::Kind)

class FuzzyMatchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void patterns_data();
    void patterns();

    void finds_data();
    void finds();
    void keepsTheOrderAndRepeats();

    void everyCaseOfEveryUnit();
    void everyCaseOfEveryPair();

    void randomTexts_data();
    void randomTexts();

    void searchesOfAProject();
};

void FuzzyMatchTest::cleanup()
{
    dropProjects();
}

void FuzzyMatchTest::patterns_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("pattern");
    QTest::newRow("an empty text has no pattern") << ""
                                                  << "";
    QTest::newRow("a null text has no pattern") << QString() << "";
    QTest::newRow("one letter") << "a"
                                << ".*a.*";
    QTest::newRow("two letters") << "ab"
                                 << ".*a.*b.*";
    QTest::newRow("the case of letters is kept") << "aB"
                                                 << ".*a.*B.*";
    QTest::newRow("a point is protected") << "a.b"
                                          << ".*a.*\\..*b.*";
    QTest::newRow("a blank is a character") << "a b"
                                            << ".*a.* .*b.*";
    QTest::newRow("a backslash alone has nothing behind it") << "\\"
                                                             << ".*\\\\";
    QTest::newRow("a backslash is glued to what follows") << "a\\b"
                                                          << ".*a.*\\\\b.*";
    QTest::newRow("two backslashes are glued together") << "\\\\x"
                                                        << ".*\\\\\\\\x.*";
    QTest::newRow("a backslash before a point") << "\\."
                                                << ".*\\\\\\..*";
    QTest::newRow("all protected characters") << "$()*+.?[]^{|}"
                                              << ".*\\$.*\\(.*\\).*\\*.*\\+.*\\..*\\?.*\\[.*\\].*\\^.*\\{.*\\|.*\\}.*";
    QTest::newRow("a minus is not protected") << "a-b"
                                              << ".*a.*-.*b.*";
    QTest::newRow("a line end") << "a\nb"
                                << ".*a.*\n.*b.*";
    QTest::newRow("a letter outside ASCII") << QString::fromUtf8("ä") << QString::fromUtf8(".*ä.*");
    QTest::newRow("a pair of surrogates is two characters")
        << codePoint(0x1F600) << QStringLiteral(".*") + QChar(0xD83D) + ".*" + QChar(0xDE00) + ".*";
}

void FuzzyMatchTest::patterns()
{
    QFETCH(QString, text);
    QTEST(FilterTools::makefuzzypattern(text), "pattern");
}

void FuzzyMatchTest::finds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isFound");
    QTest::newRow("letters in sequence") << "tmp"
                                         << "Temperature_1" << true;
    QTest::newRow("letters in another sequence") << "pmt"
                                                 << "Tempera" << false;
    QTest::newRow("another case in the text") << "TMP"
                                              << "Temperature_1" << true;
    QTest::newRow("the whole name") << "Tank"
                                    << "Tank" << true;
    QTest::newRow("one letter more than the name") << "Tankk"
                                                   << "Tank" << false;
    QTest::newRow("a letter is used once") << "aa"
                                           << "a" << false;
    QTest::newRow("the same letter twice") << "aa"
                                           << "banana" << true;
    QTest::newRow("an empty text finds nothing") << ""
                                                 << "Tank" << false;
    QTest::newRow("an empty text does not find an empty name") << ""
                                                               << "" << false;
    QTest::newRow("nothing is in an empty name") << "a"
                                                 << "" << false;
    QTest::newRow("a point is a point") << "a.b"
                                        << "a1b" << false;
    QTest::newRow("a point within") << "a.b"
                                    << "xa1.2bx" << true;
    QTest::newRow("a star is a star") << "*"
                                      << "Tank" << false;
    QTest::newRow("an opening bracket alone") << "["
                                              << "D[1]" << true;
    QTest::newRow("a class is no class") << "[a]"
                                         << "a" << false;
    QTest::newRow("a line end between") << "ab"
                                        << "a\nb" << true;
    QTest::newRow("a line end in the text") << "\n"
                                            << "a\nb" << true;
    QTest::newRow("a line end is no carriage return") << "\n"
                                                      << "a\rb" << false;
    QTest::newRow("a backslash at the end") << "a\\"
                                            << "xa1\\2" << true;
    QTest::newRow("a backslash with its letter at once") << "a\\b"
                                                         << "a1\\b" << true;
    QTest::newRow("a backslash with its letter further on") << "a\\b"
                                                            << "a\\1b" << false;
    QTest::newRow("a backslash that meets its letter later") << "\\b"
                                                             << "\\1b\\b" << true;
    QTest::newRow("two backslashes apart") << "\\\\"
                                           << "\\1\\" << false;
    QTest::newRow("two backslashes at once") << "\\\\"
                                             << "1\\\\" << true;
    QTest::newRow("behind a glued letter anything goes") << "\\ab"
                                                         << "\\a1b" << true;
    QTest::newRow("a protected character behind a backslash") << "\\."
                                                              << "\\1." << false;
    QTest::newRow("a letter and its other case outside ASCII")
        << QString::fromUtf8("ÄÖ") << QString::fromUtf8("_ä_ö_") << true;
    QTest::newRow("sharp s is not ss") << "ss" << QString::fromUtf8("Straße") << false;
    QTest::newRow("kelvin is a k") << QString(QChar(0x212A)) << "k" << true;
    QTest::newRow("long s is no s") << "s" << QString(QChar(0x17F)) << false;
    QTest::newRow("both sigmas differ in lower case") << QString(QChar(0x3C3)) << QString(QChar(0x3C2)) << false;
    QTest::newRow("a capital sigma is the small one") << QString(QChar(0x3A3)) << QString(QChar(0x3C3)) << true;
    QTest::newRow("an emoji") << codePoint(0x1F600) << "x" + codePoint(0x1F600) + "y" << true;
    QTest::newRow("another emoji of the same half") << codePoint(0x1F600) << codePoint(0x1F601) << false;
    QTest::newRow("NUL") << QString(QChar(0)) << QStringLiteral("a") + QChar(0) + "b" << true;
    QTest::newRow("no NUL") << QString(QChar(0)) << "ab" << false;
}

void FuzzyMatchTest::finds()
{
    QFETCH(QString, text);
    QFETCH(QString, name);
    QFETCH(bool, isFound);
    QCOMPARE(label::FuzzyMatch(text).matches(name), isFound);
    QCOMPARE(!filteredByExpression(text, {name}).isEmpty(), isFound);
}

void FuzzyMatchTest::keepsTheOrderAndRepeats()
{
    const QStringList names = {"Tank_2", "Pump", "tank_1", "Tank_2", "", "T-a-n-k"};
    QCOMPARE(label::FuzzyMatch("tank").filter(names), QStringList({"Tank_2", "tank_1", "Tank_2", "T-a-n-k"}));
    QCOMPARE(label::FuzzyMatch("").filter(names), QStringList());
    QCOMPARE(label::FuzzyMatch("tank").filter({}), QStringList());
}

/// Each unit that has a case, against all units that share any of its cases, both ways.
void FuzzyMatchTest::everyCaseOfEveryUnit()
{
    QMultiHash<ushort, ushort> relatives;
    QSet<ushort> withCase;
    for (uint code = 0; code < 0x10000; ++code) {
        const QChar character(code);
        const QSet<ushort> cases = {character.toLower().unicode(), character.toUpper().unicode(),
                                    character.toTitleCase().unicode(), character.toCaseFolded().unicode()};
        for (const ushort other : cases) {
            if (other == code)
                continue;
            withCase << static_cast<ushort>(code) << other;
            relatives.insert(other, static_cast<ushort>(code));
            relatives.insert(static_cast<ushort>(code), other);
        }
    }
    QVERIFY(withCase.size() > 2000);
    QStringList disagreements;
    for (const ushort code : qAsConst(withCase)) {
        QSet<ushort> related = {code};
        for (int round = 0; round < 2; ++round) {
            const QSet<ushort> known = related;
            for (const ushort one : known) {
                const QList<ushort> next = relatives.values(one);
                related.unite(QSet<ushort>(next.begin(), next.end()));
            }
        }
        QStringList names;
        for (const ushort one : qAsConst(related))
            names << unit(one) << unit('x') + unit(one) + unit('Y');
        for (const QString &text : {unit(code), unit('X') + unit(code), unit('\\') + unit(code)}) {
            const QString difference = disagreement(text, names);
            if (!difference.isEmpty())
                disagreements.append(difference);
        }
    }
    QVERIFY2(disagreements.isEmpty(), qPrintable(disagreements.join(QLatin1Char('\n'))));
}

/// Letters beyond 16 bits, whose cases differ only in the second half.
void FuzzyMatchTest::everyCaseOfEveryPair()
{
    QStringList disagreements;
    int withCase = 0;
    for (uint code = 0x10000; code < 0x20000; ++code) {
        if (QChar::toLower(code) == code && QChar::toUpper(code) == code)
            continue;
        ++withCase;
        const QString text = codePoint(code);
        QStringList names;
        for (const uint other : {code, QChar::toLower(code), QChar::toUpper(code), QChar::toCaseFolded(code)})
            names << codePoint(other) << codePoint(other) + codePoint(code) << unit('a') + codePoint(other).at(1);
        for (const QString &part : {text, QString(text.at(0)), QString(text.at(1)), unit('\\') + text}) {
            const QString difference = disagreement(part, names);
            if (!difference.isEmpty())
                disagreements.append(difference);
        }
    }
    QVERIFY(withCase > 200);
    QVERIFY2(disagreements.isEmpty(), qPrintable(disagreements.join(QLatin1Char('\n'))));
}

void FuzzyMatchTest::randomTexts_data()
{
    QTest::addColumn<Alphabet::Kind>("kind");
    QTest::addColumn<quint32>("seed");
    QTest::newRow("few letters, so that nearly all repeat") << Alphabet::Few << 1U;
    QTest::newRow("ASCII with NUL") << Alphabet::Ascii << 2U;
    QTest::newRow("meta characters and backslashes") << Alphabet::Meta << 3U;
    QTest::newRow("line ends") << Alphabet::LineEnds << 4U;
    QTest::newRow("letters with cases") << Alphabet::Letters << 5U;
    QTest::newRow("surrogates in any order") << Alphabet::Surrogates << 6U;
    QTest::newRow("all units") << Alphabet::Units << 7U;
    QTest::newRow("all of Unicode") << Alphabet::CodePoints << 8U;
}

void FuzzyMatchTest::randomTexts()
{
    QFETCH(Alphabet::Kind, kind);
    QFETCH(quint32, seed);
    Alphabet alphabet(kind, seed);
    int found = 0;
    int missed = 0;
    for (int round = 0; round < 600; ++round) {
        const QString text = alphabet.text(1, 8);
        QStringList names;
        for (int i = 0; i < 6; ++i)
            names << alphabet.text(0, 20) << alphabet.nameLike(text);
        const QString difference = disagreement(text, names);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
        const int hits = filteredByExpression(text, names).size();
        found += hits;
        missed += names.size() - hits;
    }
    // A run in which one of the answers is rare proves nothing.
    QVERIFY2(found > 300, qPrintable(QString::number(found)));
    QVERIFY2(missed > 300, qPrintable(QString::number(missed)));
}

void FuzzyMatchTest::searchesOfAProject()
{
    const QTemporaryDir folder;
    const QString key = QStringLiteral("11");
    makeProject(folder.filePath(QStringLiteral("project.db")), key);
    Alphabet alphabet(Alphabet::CodePoints, 9);
    QList<TagRow> rows;
    for (int i = 0; i < 300; ++i) {
        TagRow row;
        row.name = QStringLiteral("Tank_%1").arg(i) + alphabet.text(0, 5);
        row.connectorId = i % 2;
        rows.append(row);
    }
    writeTags(key, rows);
    TagSystem *tags = TagSystem::instance(key);
    QStringList internal;
    for (int i = 0; i < rows.size(); i += 2)
        internal.append(rows.at(i).name);
    QCOMPARE(tags->getTagNames().size(), rows.size());
    for (int round = 0; round < 100; ++round) {
        const QString text =
            round % 3 == 0 ? QString::number(alphabet.below(300)) : alphabet.nameLike(QStringLiteral("tN")).left(3);
        QCOMPARE(tags->getSimilarTagNames(text), filteredByExpression(text, tags->getTagNames()));
        QCOMPARE(tags->getInternalSimilarTagNames(text), filteredByExpression(text, internal));
    }
}

QTEST_GUILESS_MAIN(FuzzyMatchTest)

#include "tst_fuzzymatch.moc"
