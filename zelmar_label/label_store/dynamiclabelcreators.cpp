// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_store/dynamiclabelcreators.h"

namespace label {

namespace {

QRegExp expression(const char *pattern)
{
    return QRegExp(QLatin1String(pattern), Qt::CaseSensitive, QRegExp::RegExp);
}

bool found(const QRegExp &pattern, const QString &address)
{
    return pattern.indexIn(address) >= 0;
}

QString filled(const char *pattern, const QString &prefix)
{
    return QString(QLatin1String(pattern)).arg(prefix);
}

QString filled(const char *pattern, const QString &prefix, const QString &element)
{
    return QString(QLatin1String(pattern)).arg(prefix, element);
}

QString withEscapedDots(QString text)
{
    return text.replace(QLatin1Char('.'), QLatin1String("\\."));
}

/// The family of a data file by the letter of its type.
QString fileFamily(QChar letter)
{
    switch (letter.unicode()) {
    case 'B':
        return QStringLiteral("BINARY");
    case 'C':
        return QStringLiteral("COUNTER");
    case 'F':
        return QStringLiteral("FLOAT");
    case 'N':
        return QStringLiteral("NUMBER");
    default:
        return QStringLiteral("TIMER");
    }
}

} // namespace

DynamicLabelCreatorInterface *createDynamicLabelCreator(const QString &driverName)
{
    if (driverName == QLatin1String("ISO on TCP") || driverName == QLatin1String("Simatic S7-300 MPI"))
        return new IsoOnTcpCerator;
    if (driverName == QLatin1String("MicroLogix DF1 RS232") || driverName == QLatin1String("MicroLogix Ethernet") ||
        driverName == QLatin1String("PLC5 DF1 CRC"))
        return new DF1Creator;
    if (driverName == QLatin1String("LustBus ServoC/CDE Series"))
        return new LustBusCreator;
    if (driverName == QLatin1String("FX5U Ethernet"))
        return new Fx5uEthCreator;
    return new DefaultCreator;
}

bool DefaultCreator::create(const QString &, DynamicLabelItem &)
{
    return false;
}

IsoOnTcpCerator::IsoOnTcpCerator()
    : wordPattern(expression("^(DB0*(?:20(?:4[0-7]|[0-3]\\d)|1\\d{3}|[1-9]\\d{0,2})\\.(DB[BDWX]))\\d+$"))
    , bitPattern(expression("^(DB0*(?:20(?:4[0-7]|[0-3]\\d)|1\\d{3}|[1-9]\\d{0,2})\\.DBX)\\d+\\.[0-7]$"))
{
}

bool IsoOnTcpCerator::create(const QString &address, DynamicLabelItem &item)
{
    if (found(bitPattern, address)) {
        item.prefixSymbol = bitPattern.cap(1);
        item.pattern = filled("(%1)(\\d+\\.[0-7])", withEscapedDots(item.prefixSymbol));
        item.basePattern = QStringLiteral("DB_DBX");
        return true;
    }
    if (!found(wordPattern, address))
        return false;
    item.prefixSymbol = wordPattern.cap(1);
    item.pattern = filled("(%1)(\\d+)", withEscapedDots(item.prefixSymbol));
    const bool isBitByte = item.prefixSymbol.endsWith(QLatin1String("DBX"), Qt::CaseInsensitive);
    item.basePattern = isBitByte ? QStringLiteral("DB_DBX_BYTE") : QLatin1String("DB_") + wordPattern.cap(2);
    return true;
}

DF1Creator::DF1Creator()
    : wordPattern(expression("^([BCFNT]0*(?:25[0-5]|2[0-4]\\d|1\\d\\d|[1-9]\\d|9):)\\d+$"))
    , timerBitPattern(expression("^(T0*(?:25[0-5]|2[0-4]\\d|1\\d\\d|[1-9]\\d|9):)\\d+/(EN|TT|DN)$"))
    , counterBitPattern(expression("^(C0*(?:25[0-5]|2[0-4]\\d|1\\d\\d|[1-9]\\d|9):)\\d+/(C[UD]|DN|OV|U[AN])$"))
    , numberedBitPattern(expression("^([BCNT]0*(?:25[0-5]|2[0-4]\\d|1\\d\\d|[1-9]\\d|9):)\\d+/(?:1[0-5]|0?\\d)$"))
    , accPrePattern(expression("^([CT]0*(?:25[0-5]|2[0-4]\\d|1\\d\\d|[1-9]\\d|9):)\\d+\\.(ACC|PRE)$"))
{
}

bool DF1Creator::create(const QString &address, DynamicLabelItem &item)
{
    if (found(counterBitPattern, address)) {
        item.pattern = filled("(%1)(\\d+/%2)", counterBitPattern.cap(1), counterBitPattern.cap(2));
        item.basePattern = QLatin1String("COUNTER_") + counterBitPattern.cap(2);
        // The last timer address set it, mostly to nothing: the editor shows the template's symbol anyway.
        item.prefixSymbol = timerBitPattern.cap(1);
        return true;
    }
    if (found(timerBitPattern, address)) {
        item.pattern = filled("(%1)(\\d+/%2)", timerBitPattern.cap(1), timerBitPattern.cap(2));
        item.prefixSymbol = timerBitPattern.cap(1);
        item.basePattern = QLatin1String("TIMER_") + timerBitPattern.cap(2);
        return true;
    }
    if (found(accPrePattern, address)) {
        item.pattern = filled("(%1)(\\d+)\\.%2", accPrePattern.cap(1), accPrePattern.cap(2));
        item.prefixSymbol = accPrePattern.cap(1);
        item.basePattern = fileFamily(item.prefixSymbol.at(0)) + QLatin1Char('_') + accPrePattern.cap(2);
        return true;
    }
    if (found(numberedBitPattern, address)) {
        item.prefixSymbol = numberedBitPattern.cap(1);
        item.pattern = filled("(%1)(\\d+/(?:1[0-5]|0?\\d))", item.prefixSymbol);
        item.basePattern = fileFamily(item.prefixSymbol.at(0)) + QLatin1String("_BIT");
        return true;
    }
    if (found(wordPattern, address)) {
        item.prefixSymbol = wordPattern.cap(1);
        item.pattern = filled("(%1)(\\d+)", item.prefixSymbol);
        item.basePattern = fileFamily(item.prefixSymbol.at(0));
        return true;
    }
    return false;
}

bool DF1Creator::foresee(const QString &address, DynamicLabelItem &item)
{
    const QString lastTimer = timerBitPattern.cap(0);
    const bool isRecognised = create(address, item);
    // The expression matches whole addresses, so it finds its last match again, and nothing in an empty text.
    timerBitPattern.indexIn(lastTimer);
    return isRecognised;
}

Fx5uEthCreator::Fx5uEthCreator()
    : modulePattern(expression("^U(\\d+)\\\\G(\\d+)$"))
{
}

bool Fx5uEthCreator::create(const QString &address, DynamicLabelItem &item)
{
    if (!found(modulePattern, address))
        return false;
    item.basePattern = QStringLiteral("MOD_ACCESS_DEV");
    item.pattern = filled("(U%1\\\\G)(\\d+)", modulePattern.cap(1));
    item.prefixSymbol = filled("U%1\\G", modulePattern.cap(1));
    return true;
}

LustBusCreator::LustBusCreator()
    : bit32Pattern(
          expression("^(USIGN32:(?:0*\\d{1,3}):)(?:0*(?:6553[0-5]|655[0-2]\\d|65[0-4]\\d\\d|6[0-4]\\d{3}|[1-5]?"
                     "\\d{1,4}))\\.(?:3[01]|[0-2]?\\d)$"))
    , bit16Pattern(
          expression("^(USIGN16:(?:0*\\d{1,3}):)(?:0*(?:6553[0-5]|655[0-2]\\d|65[0-4]\\d\\d|6[0-4]\\d{3}|[1-5]?"
                     "\\d{1,4}))\\.(?:1[0-5]|0?\\d)$"))
    , bit8Pattern(expression("^(USIGN8:(?:0*\\d{1,3}):)(?:0*(?:6553[0-5]|655[0-2]\\d|65[0-4]\\d\\d|6[0-4]\\d{3}|[1-5]?"
                             "\\d{1,4}))\\.[0-7]$"))
    , itemPattern(
          expression("^((\\w+):(0*\\d{1,3}):)(0*(?:6553[0-5]|655[0-2]\\d|65[0-4]\\d\\d|6[0-4]\\d{3}|[1-5]?\\d{1,4}"
                     "))$"))
    , typeNames({QStringLiteral("STRING"), QStringLiteral("FLOAT32"), QStringLiteral("INT32Q16"),
                 QStringLiteral("INT32"), QStringLiteral("USIGN32"), QStringLiteral("FIXPT16"), QStringLiteral("INT16"),
                 QStringLiteral("USIGN16"), QStringLiteral("INT8"), QStringLiteral("USIGN8")})
{
}

bool LustBusCreator::create(const QString &address, DynamicLabelItem &item)
{
    const struct
    {
        const QRegExp &expression;
        const char *basePattern;
        const char *pattern;
    } bitForms[] = {
        {bit32Pattern, "USIGN32_NO_IDX_BIT", "(%1)(\\d+\\.(?:3[01]|[0-2]?\\d))"},
        {bit16Pattern, "USIGN16_NO_IDX_BIT", "(%1)(\\d+\\.(?:1[0-5]|0?\\d))"},
        {bit8Pattern, "USIGN8_NO_IDX_BIT", "(%1)(\\d+\\.[0-7])"},
    };
    for (const auto &form : bitForms) {
        if (found(form.expression, address)) {
            item.basePattern = QLatin1String(form.basePattern);
            item.prefixSymbol = form.expression.cap(1);
            item.pattern = filled(form.pattern, item.prefixSymbol);
            return true;
        }
    }
    if (!found(itemPattern, address))
        return false;
    // As typed: the set ignores case, the look-up of the template does not.
    const QString typeName = itemPattern.cap(2);
    if (typeNames.count(typeName) == 0)
        return false;
    const bool isString = address.startsWith(QLatin1String("STRING"), Qt::CaseInsensitive);
    if (isString && itemPattern.cap(4) != QLatin1String("0"))
        return false;
    item.basePattern = typeName + (isString ? QLatin1String("_NO") : QLatin1String("_NO_IDX"));
    item.prefixSymbol = itemPattern.cap(1);
    item.pattern = filled("(%1)(\\d+)", item.prefixSymbol);
    return true;
}

} // namespace label
