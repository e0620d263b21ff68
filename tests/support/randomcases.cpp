// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/randomcases.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>

namespace {

struct Atom
{
    const char *pattern;
    const char *sample;
};

// Plain ones, which may be combined in any order.
const QList<Atom> plainAtoms = {
    {"D", "D"},
    {"X", "X"},
    {"DB", "DB"},
    {"a", "a"},
    {"0", "0"},
    {"\\d", "7"},
    {".", "q"},
    {"\\.", "."},
    {"\\\\", "\\"},
    {"[A-F]", "B"},
    {"[0-7]", "3"},
    {"[^x]", "D"},
    {"[a-]", "-"},
    {"[-a]", "-"},
    {"[+--]", ","},
    {"[a-b-c]", "-"},
    {"[\\d]", "4"},
    {"[\\]a]", "]"},
    {"[\\w]", "w"},
    {"\\w", "_"},
    {"\\W", "/"},
    {"\\s", " "},
    {"\\S", "S"},
    {"\\D", "D"},
    {"\\/", "/"},
    {"\xc3\xa9", "\xc3\xa9"},
    {"\xd0\x96", "\xd0\x96"},
    {"[\xd0\x90-\xd0\xaf]", "\xd0\x96"},
    {"[a-\xd0\xaf]", "z"},
    {"\xc3\xa4?x", "x"},
    {"[^D]", "e"},
    {":", ":"},
    {"/", "/"},
    {"\\(", "("},
    {"_", "_"},
    {"\\-", "-"},
};

// Those that change their neighbours, match nothing, mean something unexpected, or are broken.
const QList<Atom> nastyAtoms = {
    {"[]a]", "]"},       {"[^]a]", "b"},  {"[^^]", "a"},      {"[[]", "["},        {"[[a]", "a"},
    {"[a^]", "^"},       {"\\x41", "A"},  {"[\\x41-C]", "B"}, {"[A-\\x43]", "C"},  {"\\0101", "A"},
    {"\\n", "\n"},       {"\\t", "\t"},   {"[\\d-z]", "-"},   {"[a-\\d]", "5"},    {"(a|b)", "b"},
    {"(|D)", ""},        {"(D|)", "D"},   {"(ab)?c", "c"},    {"(ab)*c", "ababc"}, {"(ab)+", "abab"},
    {"a{0,2}b", "b"},    {"a{2}", "aa"},  {"a{1,}", "aaa"},   {"a{,2}", ""},       {"a{0}", ""},
    {"(ab){0,1}", ""},   {"D?", ""},      {"D*", "DD"},       {"D+", "DDD"},       {"(?:xy)", "xy"},
    {"(?:x|y)", "y"},    {"(?:xy)?", ""}, {"(?=D)D", "D"},    {"(?=D)", ""},       {"(?!Q)D", "D"},
    {"(?!Q)", ""},       {"(?!D)", ""},   {"(?=a|b)", ""},    {"^", ""},           {"$", ""},
    {"\\b", ""},         {"\\B", ""},     {"|", ""},          {"||", ""},          {"(", ""},
    {")", ""},           {"[", ""},       {"]", "]"},         {"{", "{"},          {"}", "}"},
    {"{2", ""},          {"{2}", ""},     {"*", ""},          {"+", ""},           {"?", ""},
    {"\\1", "D"},        {"\\2", ""},     {"[z-a]", ""},      {"[]", ""},          {"[^]", ""},
    {"()", ""},          {"(())", ""},    {"(^D)", "D"},      {"(D$)", "D"},       {"((D)|(X))", "X"},
    {"(D(1|2)?)", "D1"}, {"\\", ""},      {"(?", ""},         {"(?:", ""},         {"(?<n>D)", ""},
    {"\\E", "E"},        {"\\A", "A"},    {"\\z", "z"},       {"\\<", "<"},        {"(a{0,2})b", "aab"},
};

PatternCase &operator+=(PatternCase &made, const Atom &atom)
{
    made.pattern += QString::fromUtf8(atom.pattern);
    made.sample += QString::fromUtf8(atom.sample);
    return made;
}

PatternCase grouped(Random &random, PatternCase inner)
{
    static const QStringList openings = {QStringLiteral("("), QStringLiteral("("), QStringLiteral("(?:")};
    static const QStringList endings = {QStringLiteral(")"),  QStringLiteral(")"),      QStringLiteral(")"),
                                        QStringLiteral(")?"), QStringLiteral("){0,2}"), QStringLiteral(")+"),
                                        QStringLiteral(")*")};
    inner.pattern = random.pick(openings) + inner.pattern + random.pick(endings);
    return inner;
}

const QStringList &ruleTexts()
{
    static const QStringList texts = [] {
        QStringList made = {QString(),
                            QStringLiteral(""),
                            QStringLiteral("N"),
                            QStringLiteral("none"),
                            QStringLiteral("m8"),
                            QStringLiteral("M8"),
                            QStringLiteral("m8a1"),
                            QStringLiteral("M8Add1"),
                            QStringLiteral("m16"),
                            QStringLiteral("m16a1"),
                            QStringLiteral("m16add1"),
                            QStringLiteral("m64a1"),
                            QStringLiteral("m64add1"),
                            QStringLiteral("semens1"),
                            QStringLiteral("dot-f"),
                            QStringLiteral("m8 dot-f:r"),
                            QStringLiteral("xx last2-dec:r xx"),
                            QStringLiteral("last2"),
                            QStringLiteral("F>good.js"),
                            QStringLiteral("F>sloppy.js"),
                            QStringLiteral("F>noinit.js"),
                            QStringLiteral("F>throws.js"),
                            QStringLiteral("F>empty.js"),
                            QStringLiteral("F>nosuch.js"),
                            QStringLiteral("F>")};
        const QStringList separators = {
            QStringLiteral("dot"),         QStringLiteral("slash"),       QStringLiteral("dotpreslash"),
            QStringLiteral("dotaccslash"), QStringLiteral("dotposslash"), QStringLiteral("dotlenslash"),
            QStringLiteral("last1"),       QStringLiteral("last2"),       QStringLiteral("union"),
            QStringLiteral("nosep"),       QStringLiteral("DOT"),         QStringLiteral("Union"),
            QStringLiteral("colon"),       QStringLiteral("LAST2")};
        const QStringList radices = {QStringLiteral("f"),    QStringLiteral("hex"), QStringLiteral("dec"),
                                     QStringLiteral("15"),   QStringLiteral("31"),  QStringLiteral("oct"),
                                     QStringLiteral("fam3"), QStringLiteral("OCT"), QStringLiteral("bin")};
        const QStringList tails = {
            QStringLiteral(":"),           QStringLiteral(":r"),      QStringLiteral(":n"),
            QStringLiteral(":N"),          QStringLiteral(":rm8"),    QStringLiteral(":rm8a1"),
            QStringLiteral(":rm16"),       QStringLiteral(":rm16_D"), QStringLiteral(":rm16a1x_D"),
            QStringLiteral(":rm64a1"),     QStringLiteral(":rfam3"),  QStringLiteral(":RM8a1_Wx_y"),
            QStringLiteral(":xrm8rm16a1"), QStringLiteral(":r_")};
        for (const QString &separator : separators) {
            for (const QString &radix : radices) {
                for (const QString &tail : tails)
                    made.append(separator + QLatin1Char('-') + radix + tail);
            }
        }
        return made;
    }();
    return texts;
}

QString randomRule(Random &random)
{
    // The plain texts come first; without more weight they would be rare.
    return random.chance(45) ? ruleTexts().at(random.below(25)) : random.pick(ruleTexts());
}

QString digits(Random &random)
{
    static const QStringList texts = {QStringLiteral("0"),         QStringLiteral("1"),     QStringLiteral("7"),
                                      QStringLiteral("8"),         QStringLiteral("16"),    QStringLiteral("17"),
                                      QStringLiteral("100"),       QStringLiteral("0100"),  QStringLiteral("128"),
                                      QStringLiteral("9999"),      QStringLiteral("10000"), QStringLiteral("65"),
                                      QStringLiteral("2147483647")};
    return random.chance(50) ? random.pick(texts) : QString::number(random.below(12000));
}

PatternCase splitRange(Random &random, const QString &separator)
{
    static const QList<Atom> bits = {{"[0-9a-f]", "e"}, {"[0-7]", "6"}, {"\\d{1,2}", "15"},
                                     {"[0-9A-F]", "A"}, {"\\d+", "31"}, {"(?:1[0-5]|0?\\d)", "9"}};
    const Atom bit = random.pick(bits);
    return {QLatin1String("\\d+") + QRegExp::escape(separator) + QLatin1String(bit.pattern),
            digits(random) + separator + QLatin1String(bit.sample)};
}

PatternCase rangeOf(Random &random, const QString &ruleText)
{
    const QString rule = ruleText.toLower();
    if (random.chance(10))
        return {QStringLiteral(".*"), digits(random)};
    if (rule.startsWith(QLatin1String("dot-")))
        return splitRange(random, QStringLiteral("."));
    if (rule.startsWith(QLatin1String("slash-")))
        return splitRange(random, QStringLiteral("/"));
    if (rule.startsWith(QLatin1String("dot")))
        return splitRange(random, QLatin1Char('.') + rule.mid(3, 3) + QLatin1Char('/'));
    if (random.chance(20))
        return {QStringLiteral("[0-9A-Fa-f]+"), random.chance(50) ? QStringLiteral("1Af") : digits(random)};
    return {QStringLiteral("\\d+"), digits(random)};
}

QStringList linesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    QStringList lines;
    const QStringList all = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    for (const QString &line : all) {
        if (!line.isEmpty() && !line.startsWith(QLatin1Char('#')))
            lines.append(line);
    }
    return lines;
}

Row rowOf(const QHash<QString, QString> &columns)
{
    Row row;
    row.pattern = columns.value(QStringLiteral("pattern"));
    row.type = columns.value(QStringLiteral("type")).toInt();
    row.addressGroupIndex = columns.value(QStringLiteral("address_group_index")).toInt();
    row.description = columns.value(QStringLiteral("description"));
    row.prefixSymbol = columns.value(QStringLiteral("prefix_symbol"));
    row.start = columns.value(QStringLiteral("start"));
    row.end = columns.value(QStringLiteral("end"));
    row.dataSize = columns.value(QStringLiteral("data_size")).toInt();
    row.multipleRule = columns.value(QStringLiteral("multiple_rule"));
    row.catchTable = columns.value(QStringLiteral("catch_table"));
    row.base = columns.value(QStringLiteral("base")).toInt();
    row.blocksize = columns.value(QStringLiteral("blocksize")).toInt();
    row.continueRule = columns.value(QStringLiteral("continue"));
    return row;
}

QList<QHash<QString, QString>> tableOf(const QStringList &lines, const QString &firstColumn)
{
    QList<QHash<QString, QString>> rows;
    QStringList names;
    for (const QString &line : lines) {
        const QStringList fields = line.split(QLatin1Char('\t'));
        if (names.isEmpty() && fields.first() != firstColumn)
            continue;
        if (names.isEmpty()) {
            names = fields;
            continue;
        }
        QHash<QString, QString> row;
        for (int i = 0; i < names.size(); ++i)
            row.insert(names.at(i), fields.value(i));
        rows.append(row);
    }
    return rows;
}

} // namespace

PatternCase nastyPattern(Random &random)
{
    PatternCase made;
    for (int left = 1 + random.below(5); left > 0; --left) {
        PatternCase part;
        for (int atoms = 1 + random.below(3); atoms > 0; --atoms)
            part += random.chance(75) ? random.pick(plainAtoms) : random.pick(nastyAtoms);
        if (random.chance(30))
            part = grouped(random, part);
        made.pattern += part.pattern;
        made.sample += part.sample;
    }
    return made;
}

PatternCase orderlyPattern(Random &random, const QString &ruleText)
{
    static const QList<Atom> symbols = {{"D", "D"},     {"X", "X"},    {"DB12\\.DBX", "DB12.DBX"}, {"M", "M"},
                                        {"B3:", "B3:"}, {"[CT]", "T"}, {"U0\\\\G", "U0\\G"},       {"(?:S|SM)", "SM"}};
    static const QList<Atom> suffixes = {{"", ""},         {"", ""},   {"", ""},
                                         {"(/DN)", "/DN"}, {"L?", ""}, {"\\.ACC", ".ACC"}};
    const Atom symbol = random.pick(symbols);
    const Atom suffix = random.pick(suffixes);
    const PatternCase range = rangeOf(random, ruleText);
    PatternCase made;
    made.pattern = QLatin1Char('(') + QLatin1String(symbol.pattern) + QLatin1String(")(") + range.pattern +
                   QLatin1Char(')') + QLatin1String(suffix.pattern);
    made.sample = QLatin1String(symbol.sample) + range.sample + QLatin1String(suffix.sample);
    return made;
}

QString mutated(Random &random, const QString &text)
{
    static const QString characters = QString::fromUtf8("DXMB0123789AafF./:-_\\ []()+*\xc3\xa9\xd9\xa3\xef\xbc\x95");
    static const QStringList stations = {QStringLiteral("3-"),          QStringLiteral("-"),  QStringLiteral("x-"),
                                         QStringLiteral("12-"),         QStringLiteral("0-"), QStringLiteral("1-2-"),
                                         QStringLiteral("99999999999-")};
    QString made = text;
    for (int left = random.below(4); left > 0; --left) {
        const int at = random.below(made.size() + 1);
        const QChar character = characters.at(random.below(characters.size()));
        switch (random.below(5)) {
        case 0:
            made.insert(at, character);
            break;
        case 1:
            made.remove(at, 1);
            break;
        case 2:
            if (at < made.size())
                made[at] = character;
            break;
        case 3:
            made.truncate(at);
            break;
        default:
            made = random.chance(50) ? made.toLower() : made + QString::number(random.below(20));
        }
    }
    return random.chance(15) ? random.pick(stations) + made : made;
}

RowCase randomRow(Random &random)
{
    static const QStringList starts = {QStringLiteral("0"),  QStringLiteral("0"), QStringLiteral("1"),
                                       QStringLiteral("-5"), QStringLiteral(""),  QStringLiteral("10")};
    static const QStringList ends = {
        QStringLiteral("9999"), QStringLiteral("7777"),       QStringLiteral("FFF"),
        QStringLiteral("77"),   QStringLiteral("2147483647"), QStringLiteral("99999999999"),
        QStringLiteral("x"),    QStringLiteral(" 100 "),      QStringLiteral("0x7f")};
    static const QList<int> bases = {10, 10, 10, 10, 10, 8, 16, 16, 2, 36, 0, 1, 37, -5, INT_MAX, INT_MIN};
    static const QList<int> types = {0, 0, 0, 1, 2, 2, 3, 4, 5, 9, -1};
    static const QList<int> sizes = {0, 1, 2, 2, 2, 4, 8, 3, -1, 100};
    static const QList<int> groups = {2, 2, 2, 2, 2, 2, 1, 0, 3, 9, -1};
    RowCase made;
    Row &row = made.row;
    row.multipleRule = randomRule(random);
    const PatternCase pattern = random.chance(80) ? orderlyPattern(random, row.multipleRule) : nastyPattern(random);
    row.pattern = pattern.pattern;
    made.sample = pattern.sample;
    row.type = random.pick(types);
    row.addressGroupIndex = random.pick(groups);
    row.prefixSymbol = pattern.sample.left(1);
    row.start = random.pick(starts);
    row.end = random.pick(ends);
    row.dataSize = random.pick(sizes);
    row.base = random.pick(bases);
    row.blocksize = random.pick(QList<int>{64, 1, 0, 4, 1000});
    return made;
}

void writeRandomScripts()
{
    writeScript(
        QStringLiteral("good.js"),
        QStringLiteral("function init() { bitBase = 8; needOptimize = true; needAligment = true; aligmentSize "
                       "= 4; canConvertToRegister = true; addressStartPos = 1; print('ready', aligmentSize); }\n"
                       "function getAddressRange(a) { return parseInt(a.replace(/[^0-9]/g, ''), 10); }\n"
                       "function bitoffset(a) { return a.length; }\n"
                       "function convertToRegisterAddress(a) { return a + '!'; }\n"
                       "function makeBitContinueCommand(a, n, s) { var l = []; for (var i = 0; i < n; ++i) "
                       "l.push(a + '+' + i * s); return l; }\n"));
    writeScript(QStringLiteral("sloppy.js"),
                QStringLiteral("function init() { needAligment = true; aligmentSize = 0; }"));
    writeScript(QStringLiteral("noinit.js"), QStringLiteral("function bitoffset(a) { return 1; }"));
    writeScript(QStringLiteral("throws.js"),
                QStringLiteral("function bitoffset(a) { return 1; }\nthrow new Error('no');"));
    writeScript(QStringLiteral("empty.js"), QString());
}

QString described(const Row &row)
{
    return QStringLiteral("pattern |") + row.pattern + QStringLiteral("| type ") + QString::number(row.type) +
           QStringLiteral(" group ") + QString::number(row.addressGroupIndex) + QStringLiteral(" limits |") +
           row.start + QStringLiteral("| |") + row.end + QStringLiteral("| size ") + QString::number(row.dataSize) +
           QStringLiteral(" rule |") + row.multipleRule + QStringLiteral("| base ") + QString::number(row.base) +
           QStringLiteral(" block ") + QString::number(row.blocksize);
}

QList<ShippedDriver> shippedDrivers()
{
    const QDir folder(QStringLiteral(ZELMAR_LABEL_SHIPPED_DRIVERS));
    QList<ShippedDriver> drivers;
    const QStringList files = folder.entryList({QStringLiteral("*.tsv")}, QDir::Files, QDir::Name);
    for (const QString &file : files) {
        ShippedDriver driver;
        driver.name = file;
        const auto rows = tableOf(linesOf(folder.filePath(file)), QStringLiteral("pattern"));
        for (const auto &columns : rows)
            driver.rows.append(rowOf(columns));
        const QString samples = folder.filePath(QLatin1String("samples/") + file);
        if (QFile::exists(samples)) {
            const auto known = tableOf(linesOf(samples), QStringLiteral("verdict"));
            for (const auto &columns : known)
                driver.addresses.append(columns.value(QStringLiteral("address")));
        }
        drivers.append(driver);
    }
    return drivers;
}

void copyShippedScripts()
{
    const QDir folder(QStringLiteral(ZELMAR_LABEL_SHIPPED_DRIVERS "/scripts"));
    const QStringList files = folder.entryList({QStringLiteral("*.js")}, QDir::Files);
    for (const QString &name : files) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(file.fileName()));
        writeScript(name, QString::fromUtf8(file.readAll()));
    }
}
