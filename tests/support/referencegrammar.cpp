// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/referencegrammar.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScriptContext>
#include <QScriptEngine>
#include <QStringList>
#include <QTextStream>
#include <QVariant>

#include <cmath>
#include <limits>

namespace reference {

namespace {

const QChar dash = QLatin1Char('-');

bool canBeRadix(int radix)
{
    return radix >= 2 && radix <= 36;
}

int toNumber(const QString &text, int radix, bool &ok)
{
    ok = false;
    if (radix != 0 && !canBeRadix(radix))
        return 0;
    return text.toInt(&ok, radix);
}

QString print(int value, int radix)
{
    return QString::number(value, canBeRadix(radix) ? radix : 10);
}

int plus(int left, qint64 right)
{
    return static_cast<int>(static_cast<quint32>(qint64(left) + right));
}

int times(int left, int right)
{
    return static_cast<int>(static_cast<quint32>(qint64(left) * right));
}

bool hasStation(const QString &address)
{
    return address.split(dash).size() >= 2;
}

QString withoutStation(const QString &address)
{
    const QStringList parts = address.split(dash);
    return parts.size() < 2 ? address : parts.at(1);
}

int stationOf(const QString &address)
{
    const QStringList parts = address.split(dash);
    return parts.size() < 2 ? -1 : parts.at(0).toInt();
}

CommunicatorCommand relocated(const QString &address, const CommunicatorCommand &command)
{
    CommunicatorCommand fresh;
    fresh.address = address;
    fresh.scanTime = command.scanTime;
    fresh.dataType = command.dataType;
    fresh.length = command.length;
    fresh.auxiliaryNumber = command.auxiliaryNumber;
    return fresh;
}

CommunicatorCommand atStation(int station, const CommunicatorCommand &command)
{
    if (station == -1)
        return command;
    return relocated(QString::number(station) + QLatin1String("-") + withoutStation(command.address), command);
}

CommunicatorCommand fresh(const QString &address, int type)
{
    CommunicatorCommand made;
    made.address = address;
    made.dataType = static_cast<CommunicatorCommand::DataType>(type);
    return made;
}

bool passes(int rowType, int filter)
{
    if (filter == -1)
        return true;
    return filter == 0 ? rowType == 0 : rowType != 0;
}

QScriptValue printLine(QScriptContext *context, QScriptEngine *engine)
{
    QStringList texts;
    for (int i = 0; i < context->argumentCount(); ++i)
        texts << context->argument(i).toString();
    qDebug() << "Script debug:" << texts.join(QLatin1Char(' '));
    return engine->undefinedValue();
}

QScriptValue called(QScriptEngine &engine, const char *function, const QScriptValueList &arguments)
{
    return engine.globalObject().property(QLatin1String(function)).call(QScriptValue(), arguments);
}

} // namespace

Rule::Rule(const QString &ruleText)
    : text(ruleText)
{
}

QString Rule::word(int group) const
{
    QRegExp shape(QStringLiteral("(\\w+)-(\\w+)(:\\w*)"));
    if (shape.indexIn(text) >= 0)
        return shape.cap(group);
    return QStringList{QStringLiteral("."), QStringLiteral("f"), QStringLiteral(":r")}.at(group - 1);
}

bool Rule::isCompound() const
{
    return QRegExp(QStringLiteral("(\\w+)-(\\w+)(:\\w*)")).exactMatch(text);
}

bool Rule::tailHolds(const char *expression) const
{
    return QRegExp(QLatin1String(expression)).indexIn(word(3).toLower()) >= 0;
}

bool Rule::isSplit() const
{
    static const QStringList words = {QStringLiteral("dot"),         QStringLiteral("slash"),
                                      QStringLiteral("dotpreslash"), QStringLiteral("dotaccslash"),
                                      QStringLiteral("dotposslash"), QStringLiteral("dotlenslash"),
                                      QStringLiteral("last1"),       QStringLiteral("last2")};
    return words.contains(word(1).toLower());
}

bool Rule::isOnePart() const
{
    return word(1).toLower() == QLatin1String("union") || word(1).toLower() == QLatin1String("nosep");
}

QString Rule::separator() const
{
    const QString lowered = word(1).toLower();
    if (lowered == QLatin1String("dot"))
        return QStringLiteral(".");
    if (lowered == QLatin1String("slash"))
        return QStringLiteral("/");
    if (lowered == QLatin1String("dotpreslash"))
        return QStringLiteral(".pre/");
    if (lowered == QLatin1String("dotaccslash"))
        return QStringLiteral(".acc/");
    if (lowered == QLatin1String("dotposslash"))
        return QStringLiteral(".pos/");
    if (lowered == QLatin1String("dotlenslash"))
        return QStringLiteral(".len/");
    if (lowered == QLatin1String("last1") || lowered == QLatin1String("last2") || isOnePart())
        return QString();
    return lowered;
}

QString Rule::wordPart(const QString &range) const
{
    if (isOnePart())
        return range;
    if (!isSplit())
        return QString();
    const QString lowered = word(1).toLower();
    if (lowered == QLatin1String("last2")) {
        const QString front = range.size() > 2 ? range.left(range.size() - 2) : QString();
        return word(3).toLower().startsWith(QLatin1String(":rfam3")) ? front + QLatin1String("01") : front;
    }
    if (lowered == QLatin1String("last1"))
        return range.size() > 1 ? range.left(range.size() - 1) : QString();
    return range.toLower().split(separator()).value(0);
}

QString Rule::bitPart(const QString &range) const
{
    const QString lowered = word(1).toLower();
    if (lowered == QLatin1String("last2"))
        return range.right(2);
    if (lowered == QLatin1String("last1"))
        return range.right(1);
    return range.split(separator()).value(1);
}

int Rule::bitOffset(const QString &range) const
{
    const QString lowered = word(2).toLower();
    int radix = -1;
    if (lowered == QLatin1String("f") || lowered == QLatin1String("hex"))
        radix = 16;
    else if (lowered == QLatin1String("15") || lowered == QLatin1String("31") || lowered == QLatin1String("dec") ||
             lowered == QLatin1String("fam3"))
        radix = 10;
    else if (lowered == QLatin1String("oct"))
        radix = 8;
    else
        return -1;
    bool ok = false;
    const int bit = toNumber(bitPart(range), radix, ok);
    if (!ok)
        return -1;
    return lowered == QLatin1String("fam3") ? plus(bit, -1) : bit;
}

int Rule::onePartBitOffset(const QString &range) const
{
    const QString lowered = word(2).toLower();
    int radix = -1;
    if (isOnePart()) {
        if (lowered == QLatin1String("dec"))
            radix = 10;
        else if (lowered == QLatin1String("oct"))
            radix = 8;
        else if (lowered == QLatin1String("hex"))
            radix = 16;
    }
    if (radix == -1) {
        qDebug() << "onePartBitOffset"
                 << "base error " << range;
        return -1;
    }
    bool ok = false;
    int number = toNumber(range, radix, ok);
    if (!ok)
        return -1;
    if (m8add1() || m16add1())
        number = plus(number, -1);
    return number % aligmentSize();
}

QString Rule::registerSymbol(const QString &defaultSymbol) const
{
    const QStringList parts = word(3).split(QLatin1Char('_'));
    return parts.size() >= 2 ? parts.at(1) : defaultSymbol;
}

QString Rule::registerNumber(int number, int base) const
{
    if (tailHolds("rm8(?!a)"))
        return print(number - number % 8, base);
    if (tailHolds("rm8a1\\w*"))
        return print(plus(number, -1) / 8 * 8 + 1, base);
    if (tailHolds("rm16(?!a)"))
        return print(number - number % 16, base);
    if (tailHolds("rm16a1\\w*"))
        return print(plus(number, -1) / 16 * 16 + 1, base);
    return QString();
}

int Rule::bitRadix() const
{
    const QString lowered = word(2).toLower();
    if (lowered == QLatin1String("f"))
        return isOnePart() ? -1 : 16;
    if (lowered == QLatin1String("hex"))
        return 16;
    if (lowered == QLatin1String("dec"))
        return 10;
    if (lowered == QLatin1String("15"))
        return isOnePart() ? -1 : 10;
    if (lowered == QLatin1String("31"))
        return isOnePart() ? -1 : 32;
    return lowered == QLatin1String("oct") ? 8 : -1;
}

// A rule has one kind of alignment at most, the first of these that its text names.

bool Rule::m8() const
{
    return isCompound() ? tailHolds("rm8(?!a)") : text.toLower() == QLatin1String("m8");
}

bool Rule::m8add1() const
{
    const QString lowered = text.toLower();
    const bool isNamed =
        isCompound() ? tailHolds("rm8a1\\w*") : lowered == QLatin1String("m8a1") || lowered == QLatin1String("m8add1");
    return isNamed && !m8();
}

bool Rule::m16() const
{
    const bool isNamed = isCompound() ? tailHolds("rm16(?!a)") : text.toLower() == QLatin1String("m16");
    return isNamed && !m8() && !m8add1();
}

bool Rule::m64add1() const
{
    const QString lowered = text.toLower();
    const bool isNamed = isCompound() ? word(3).toLower().startsWith(QLatin1String(":rm64a1"))
                                      : lowered == QLatin1String("m64a1") || lowered == QLatin1String("m64add1");
    return isNamed && !m8() && !m8add1() && !m16();
}

bool Rule::m16add1() const
{
    const QString lowered = text.toLower();
    const bool isNamed = isCompound() ? tailHolds("rm16a1\\w*")
                                      : lowered == QLatin1String("m16a1") || lowered == QLatin1String("m16add1");
    return isNamed && !m8() && !m8add1() && !m16() && !m64add1();
}

bool Rule::isAligned(int value) const
{
    if (m8())
        return (value & 7) == 0;
    if (m8add1())
        return (value & 7) == 1;
    if (m16())
        return (value & 15) == 0;
    if (m64add1())
        return (value & 63) == 1;
    if (m16add1())
        return (value & 15) == 1;
    return true;
}

int Rule::aligmentSize() const
{
    if (m8() || m8add1())
        return 8;
    return m16() || m16add1() ? 16 : 1;
}

bool Rule::countsBits() const
{
    return m8() || m16() || m8add1() || m16add1();
}

bool Rule::needOptimize() const
{
    return isCompound() ? word(3).toLower().startsWith(QLatin1String(":n"))
                        : !text.toLower().startsWith(QLatin1Char('n'));
}

bool Rule::canConvertToRegister() const
{
    return word(3).toLower().startsWith(QLatin1String(":r"));
}

Script::Script(const QString &ruleText)
    : path(QStringLiteral("not exist"))
{
    QDir folder(QCoreApplication::applicationDirPath());
    if (!folder.cd(QStringLiteral("scripts"))) {
        folder.mkdir(QStringLiteral("scripts"));
        folder.cd(QStringLiteral("scripts"));
    }
    if (!ruleText.mid(2).isEmpty())
        path = folder.absoluteFilePath(ruleText.mid(2));
}

bool Script::exists() const
{
    return QFileInfo(path).exists();
}

void Script::load()
{
    if (!exists())
        return;
    QString text;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        text = QTextStream(&file).readAll();
    loaded = !text.isEmpty();
    engine = std::make_shared<QScriptEngine>();
    QScriptValue global = engine->globalObject();
    if (loaded) {
        global.setProperty(QStringLiteral("print"), engine->newFunction(printLine));
        global.setProperty(QStringLiteral("bitBase"), bitBase);
        global.setProperty(QStringLiteral("needOptimize"), needOptimize);
        global.setProperty(QStringLiteral("needAligment"), needAligment);
        global.setProperty(QStringLiteral("aligmentSize"), aligmentSize);
        global.setProperty(QStringLiteral("canConvertToRegister"), canConvertToRegister);
        global.setProperty(QStringLiteral("addressStartPos"), addressStartPos);
    }
    engine->evaluate(text);
    if (engine->hasUncaughtException()) {
        qDebug() << "uncaught exception at line" << engine->uncaughtExceptionLineNumber() << ":"
                 << engine->uncaughtException().toString();
        return;
    }
    loaded = global.property(QStringLiteral("init")).call().isValid();
    if (!loaded) {
        qDebug() << "script init function call fail" << path;
        return;
    }
    bitBase = global.property(QStringLiteral("bitBase")).toInt32();
    needOptimize = global.property(QStringLiteral("needOptimize")).toBool();
    needAligment = global.property(QStringLiteral("needAligment")).toBool();
    aligmentSize = global.property(QStringLiteral("aligmentSize")).toInt32();
    canConvertToRegister = global.property(QStringLiteral("canConvertToRegister")).toBool();
    addressStartPos = global.property(QStringLiteral("addressStartPos")).toInt32();
}

/// A device address around its range string.
struct Format::Cut
{
    QString prefix;
    QString suffix;
    int number = -1;
};

Format::Format(const Row &columns)
    : row(columns)
    , m_script(columns.multipleRule)
{
    qDebug() << "------------------------------------------    commandformatter";
    m_script.load();
}

QRegExp Format::expression() const
{
    return QRegExp(row.pattern, Qt::CaseSensitive, QRegExp::RegExp);
}

int Format::matchedLength(const QString &address) const
{
    const QRegExp pattern = expression();
    return pattern.exactMatch(withoutStation(address)) ? address.size() : pattern.matchedLength();
}

bool Format::isAddressValid(const QString &address) const
{
    const QString body = hasStation(address) ? withoutStation(address) : address;
    if (!expression().exactMatch(body))
        return false;
    const int number = getAddresRangePart(body);
    return number == -1 || isRangeValid(number);
}

bool Format::isAddressDataTypeMatch(const QString &address, int type) const
{
    if (!expression().exactMatch(address))
        return false;
    if (!isRangeValid(getAddresRangePart(address)))
        return false;
    return type == 0 ? row.type == 0 : row.type != 0;
}

QString Format::getRangeString(const QString &address) const
{
    QRegExp pattern = expression();
    return pattern.indexIn(address, 0, QRegExp::CaretAtZero) >= 0 ? pattern.cap(row.addressGroupIndex) : QString();
}

int Format::getAddresRangePart(const QString &address) const
{
    if (m_script.loaded) {
        const QScriptValue result = called(*m_script.engine, "getAddressRange", {address});
        if (result.isValid())
            return result.toInt32();
        qDebug() << "script getAddressRange function call fail" << address;
        return -1;
    }
    QString digits = getRangeString(address);
    if (row.type == 0)
        digits = Rule(row.multipleRule).wordPart(digits);
    if (digits.isEmpty())
        return -1;
    bool ok = false;
    const int number = toNumber(digits, row.base, ok);
    return ok ? number : -1;
}

int Format::getbitOffset(const QString &address) const
{
    QRegExp pattern = expression();
    if (pattern.indexIn(address, 0, QRegExp::CaretAtZero) < 0)
        return -1;
    if (row.type != 0)
        return -1;
    if (m_script.loaded) {
        const QScriptValue result = called(*m_script.engine, "bitoffset", {address});
        if (result.isValid())
            return result.toInt32();
        qDebug() << "script bitoffset function call fail" << address;
        return -1;
    }
    const Rule rule(row.multipleRule);
    const QString range = pattern.cap(row.addressGroupIndex);
    return rule.isSplit() ? rule.bitOffset(range) : rule.onePartBitOffset(range);
}

bool Format::isRangeValid(int value) const
{
    if (row.type != 0 && !validateMultiple(value))
        return false;
    bool ok = false;
    const int first = toNumber(row.start, row.base, ok);
    if (!ok) {
        qDebug() << "isRangeValid"
                 << "CommandFormatter isRangeValid data error";
        return false;
    }
    const int last = toNumber(row.end, row.base, ok);
    if (!ok) {
        qDebug() << "isRangeValid"
                 << "CommandFormatter isRangeValid data error";
        return false;
    }
    return first <= value && value <= last;
}

void Format::bitOffsetCarry(int &word, int &bit, int base) const
{
    const Rule rule(row.multipleRule);
    if (base == 10 && rule.isSplit()) {
        const int bits = rule.bitRadix() == 32 ? 32 : 16;
        if (bit / bits != 0) {
            word = plus(word, bit / bits);
            bit = bit % bits;
        }
        return;
    }
    const int digits = row.multipleRule.toLower().contains(QLatin1String("last2")) ? 2 : 1;
    const QString text = print(bit, base);
    if (text.size() > digits) {
        word = plus(word, QVariant(text.left(text.size() - digits)).toInt());
        bit = QVariant(text.right(digits)).toInt();
    }
}

bool Format::validateMultiple(int value) const
{
    if (!m_script.exists())
        return Rule(row.multipleRule).isAligned(value);
    if (!m_script.needAligment)
        return true;
    // Nothing is a multiple of 0; that a script announces it is a mistake in the script.
    return m_script.aligmentSize != 0 && (qint64(value) - m_script.addressStartPos) % m_script.aligmentSize == 0;
}

bool Format::needOptimize() const
{
    return m_script.exists() ? m_script.needOptimize : Rule(row.multipleRule).needOptimize();
}

int Format::aligmentSize() const
{
    return m_script.exists() ? m_script.aligmentSize : Rule(row.multipleRule).aligmentSize();
}

bool Format::isTypeRangeNeedAlignmentByte() const
{
    return m_script.exists() ? m_script.needAligment : Rule(row.multipleRule).countsBits();
}

int Format::bitbase() const
{
    return m_script.exists() ? m_script.bitBase : Rule(row.multipleRule).bitRadix();
}

bool Format::canConvertRegisterCommand() const
{
    return m_script.exists() ? m_script.canConvertToRegister : Rule(row.multipleRule).canConvertToRegister();
}

Format::Cut Format::cut(const QString &deviceAddress) const
{
    Cut made;
    made.number = getAddresRangePart(deviceAddress);
    QRegExp pattern = expression();
    pattern.indexIn(deviceAddress, 0, QRegExp::CaretAtZero);
    const int position = pattern.pos(row.addressGroupIndex);
    made.prefix = deviceAddress.left(position);
    if (position >= 0)
        made.suffix = deviceAddress.mid(position + pattern.cap(row.addressGroupIndex).size());
    return made;
}

int Format::unitStep() const
{
    if (!isTypeRangeNeedAlignmentByte())
        return 1;
    return static_cast<int>(static_cast<quint32>(static_cast<quint64>(row.dataSize) * 8));
}

QList<CommunicatorCommand> Format::pieces(const CommunicatorCommand &command, unsigned long long size) const
{
    const int station = stationOf(command.address);
    const Cut parts = cut(withoutStation(command.address));
    const double exact = double(size) / double(static_cast<unsigned long long>(row.dataSize)) + 0.49;
    const int count = exact < std::numeric_limits<int>::max() ? qRound(exact) : 0;
    const int step = unitStep();
    QList<CommunicatorCommand> made;
    int value = parts.number;
    for (int i = 0; i < count; ++i) {
        if (isRangeValid(value)) {
            QString address = parts.prefix + print(value, row.base) + parts.suffix;
            if (station != -1)
                address = QString::number(station) + QLatin1String("-") + address;
            made << fresh(address, row.type);
        }
        value = plus(value, step);
    }
    return made;
}

QList<CommunicatorCommand> Format::autoCompleteCommand(const CommunicatorCommand &command) const
{
    if (command.length > 1)
        return autoCompleteStringCommand(command);
    if (!expression().exactMatch(withoutStation(command.address)))
        return {command};
    if (command.dataType == CommunicatorCommand::Bit)
        return {command};
    if (!(static_cast<unsigned long long>(row.dataSize) < command.getDataSize()))
        return {command};
    return pieces(command, command.getDataSize());
}

QList<CommunicatorCommand> Format::autoCompleteStringCommand(const CommunicatorCommand &command) const
{
    CommunicatorCommand single = command;
    single.length = 1;
    single.dataType = static_cast<CommunicatorCommand::DataType>(row.type);
    if (!expression().exactMatch(withoutStation(command.address)))
        return {single};
    if (!(static_cast<unsigned long long>(row.dataSize) < command.length))
        return {single};
    return pieces(command, command.length);
}

QList<CommunicatorCommand> Format::makeContinueCommand(const CommunicatorCommand &command, int count) const
{
    if (command.dataType == CommunicatorCommand::Bit)
        return makeBitContinueCommand(command, count, 1, true);
    const int station = stationOf(command.address);
    const QString body = withoutStation(command.address);
    if (!expression().exactMatch(body))
        return {command};
    const Cut parts = cut(body);
    int step = unitStep();
    int type = row.type;
    int everyPass = 1;
    if (row.type > 0 && command.dataType > 0) {
        const int difference = int(command.dataType) - row.type;
        if (difference == 1)
            step = times(step, 2);
        if (difference == 2)
            step = times(step, 4);
        if (difference == -1)
            everyPass = 2;
        if (difference == -2)
            everyPass = 4;
        if (difference != 0 && difference >= -2 && difference <= 2)
            type = command.dataType;
    }
    QList<CommunicatorCommand> made;
    int value = parts.number;
    for (int pass = 0; pass < count; ++pass) {
        if (isRangeValid(value))
            made << atStation(station, fresh(parts.prefix + print(value, row.base) + parts.suffix, type));
        if (everyPass == 1 || pass % everyPass == 1)
            value = plus(value, step);
    }
    return made;
}

QList<CommunicatorCommand> Format::makeContinueCommandwithCap(const CommunicatorCommand &command, int count, int cap,
                                                              bool checkRange) const
{
    if (command.dataType == CommunicatorCommand::Bit)
        return makeBitContinueCommand(command, count, cap, checkRange);
    const int station = stationOf(command.address);
    const QString body = withoutStation(command.address);
    if (!expression().exactMatch(body))
        return {command};
    const Cut parts = cut(body);
    const int step = times(checkRange ? unitStep() : 1, cap);
    QList<CommunicatorCommand> made;
    int value = parts.number;
    for (int pass = 0; pass < count; ++pass) {
        if (!checkRange || isRangeValid(value)) {
            CommunicatorCommand next = fresh(parts.prefix + print(value, row.base) + parts.suffix, row.type);
            next.length = command.length;
            next.scanTime = command.scanTime;
            made << atStation(station, next);
        }
        value = plus(value, step);
    }
    return made;
}

QList<CommunicatorCommand> Format::makeBitContinueCommand(const CommunicatorCommand &command, int count, int step,
                                                          bool checkRange) const
{
    QList<CommunicatorCommand> made;
    if (m_script.loaded) {
        const QScriptValue result = called(*m_script.engine, "makeBitContinueCommand", {command.address, count, step});
        if (!result.isValid()) {
            qDebug() << "script makeBitContinueCommand function call fail" << command.stringKey() << count << step;
            return made;
        }
        for (const QString &address : qscriptvalue_cast<QStringList>(result)) {
            made << command;
            made.last().address = address;
        }
        return made;
    }
    const Rule rule(row.multipleRule);
    const int station = stationOf(command.address);
    const QString body = withoutStation(command.address);
    int word = getAddresRangePart(body);
    int bit = getbitOffset(body);
    const int radix = bitbase();
    QRegExp pattern = expression();
    pattern.indexIn(body, 0, QRegExp::CaretAtZero);
    const QString prefix = command.address.left(pattern.pos(row.addressGroupIndex));
    for (int pass = 0; pass < count; ++pass) {
        if (rule.isOnePart()) {
            if (!checkRange || isRangeValid(word))
                made << atStation(station, fresh(prefix + print(word, row.base), row.type));
            word = plus(word, step);
            continue;
        }
        if (!checkRange || isRangeValid(bit)) {
            QString bitText = print(bit, radix == 32 ? 10 : radix);
            const int width = row.multipleRule.contains(QLatin1String("last2"), Qt::CaseInsensitive) ? 2 : 1;
            while (bitText.size() < width)
                bitText.prepend(QLatin1Char('0'));
            made << atStation(station, fresh(prefix + print(word, row.base) + rule.separator() + bitText, row.type));
        }
        bit = plus(bit, step);
        bitOffsetCarry(word, bit, radix);
    }
    return made;
}

CommunicatorCommand Format::makeBlockCommand(int stationId, int value, int length) const
{
    QString address = row.prefixSymbol + print(value, row.base);
    if (stationId != -1)
        address = QString::number(stationId) + QLatin1String("-") + address;
    CommunicatorCommand made = fresh(address, row.type);
    made.length = static_cast<quint64>(qint64(length));
    return made;
}

QString Format::convertToRegisterAddress(const CommunicatorCommand &command) const
{
    if (m_script.loaded) {
        const QScriptValue result = called(*m_script.engine, "convertToRegisterAddress", {command.address});
        if (result.isValid())
            return result.toString();
        qDebug() << "script convertToRegisterAddress function call fail" << command.address;
        return QString();
    }
    const QString body = withoutStation(command.address);
    const Rule rule(row.multipleRule);
    const QString word = rule.wordPart(getRangeString(body));
    QString range = word;
    if (!rule.isSplit()) {
        bool ok = false;
        const int number = toNumber(word, row.base, ok);
        range = ok ? rule.registerNumber(number, row.base) : QString();
        if (!ok) {
            qDebug() << "convertedRegisterTypeCommandRange"
                     << "Convert range string to number fail" << body;
        }
    }
    const QString address = rule.registerSymbol(row.prefixSymbol) + range;
    const int station = stationOf(command.address);
    return station == -1 ? address : QString::number(station) + QLatin1String("-") + address;
}

int Table::getFirstMatchedAddressIndex(const QString &address, int type) const
{
    for (int i = 0; i < rows.size(); ++i) {
        if (rows.at(i).isAddressValid(address) && passes(rows.at(i).row.type, type))
            return i;
    }
    return -1;
}

QList<int> Table::getAllPartialMatchedAddressIndex(const QString &address, int type) const
{
    QList<int> found;
    for (int i = 0; i < rows.size(); ++i) {
        const int matched = rows.at(i).matchedLength(address);
        if (matched >= withoutStation(address).size() && passes(rows.at(i).row.type, type))
            found << i;
    }
    return found;
}

CommunicatorCommand Table::convertBitCommandToRegisterCommand(const CommunicatorCommand &command, int &typeIndex,
                                                              QString &convertedAddress) const
{
    if (command.dataType != 0) {
        qDebug() << "CommandInformationTalbe::convertBitCommandToRegisterCommand -- Argument cmd is not bit type";
        return CommunicatorCommand();
    }
    const QString body = withoutStation(command.address);
    const int bitRow = getFirstMatchedAddressIndex(body, command.dataType);
    if (bitRow == -1) {
        qDebug() << QString(QLatin1String("No match address (") + command.address +
                            QLatin1String(") in specific type (") + QString::number(command.dataType) +
                            QLatin1String(")"));
        return CommunicatorCommand();
    }
    const int offset = rows.at(bitRow).getbitOffset(body);
    convertedAddress = rows.at(bitRow).convertToRegisterAddress(command);
    typeIndex = getFirstMatchedAddressIndex(convertedAddress, 2);
    if (typeIndex == -1) {
        qDebug() << "convertBitCommandToRegisterCommand"
                 << QString(QLatin1String("ERROR: ") + convertedAddress + QLatin1String(" cant not match any type. "));
        return CommunicatorCommand();
    }
    const int width = times(rows.at(typeIndex).row.dataSize, 8);
    if (width < offset) {
        qDebug() << "convertBitCommandToRegisterCommand"
                 << QString(QLatin1String("ERROR: [") + command.address + QLatin1String("] bit offset(") +
                            QString::number(offset) + QLatin1String(") is bigger than converted command [") +
                            convertedAddress + QLatin1String("] datasize(") + QString::number(width) +
                            QLatin1String(")."));
        return CommunicatorCommand();
    }
    return fresh(convertedAddress, rows.at(typeIndex).row.type);
}

QList<CommunicatorCommand> Table::makeBlockCommand(int stationId, int typeIndex, int start, int length) const
{
    const Format &row = rows.at(typeIndex);
    const int size = row.row.dataSize;
    const int alignment = row.aligmentSize();
    const bool isBitRanged = row.isTypeRangeNeedAlignmentByte();
    const qint64 limit = isBitRanged ? qint64(row.row.blocksize) * size * 8 : row.row.blocksize;
    QList<CommunicatorCommand> made;
    // A row that allows no block has none.
    while (length > 0 && limit > 0) {
        int chunk = int(qMin<qint64>(length, limit));
        length -= chunk;
        if (isBitRanged)
            chunk = int(std::ceil(chunk / (size * 8.0)));
        made << row.makeBlockCommand(stationId, start, chunk);
        start = plus(start, alignment > 1 ? times(times(chunk, size), 8) : chunk);
    }
    return made;
}

} // namespace reference
