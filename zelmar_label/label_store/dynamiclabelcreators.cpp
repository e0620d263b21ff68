// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_store/dynamiclabelcreators.h"

#include <QStringList>

#include <utility>

namespace label {

namespace {

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

/// The element of the address names the template: "DB_" and "DBW".
FamilyForm formWithElement(const QString &pattern, const char *base, const char *rowPattern, int behindRange)
{
    return {Pattern(pattern), text(base), true, QString(), text(rowPattern), behindRange};
}

FamilyForm form(const QString &pattern, const QString &base, const char *rowPattern)
{
    return {Pattern(pattern), base, false, QString(), text(rowPattern), 0};
}

AddressFamily noFamilies()
{
    return AddressFamily({});
}

AddressFamily dataBlocks()
{
    const QString block = text("^(DB0*(?:20(?:4[0-7]|[0-3]\\d)|1\\d{3}|[1-9]\\d{0,2})\\.");
    const char *const number = "(%1)(\\d+)";
    return AddressFamily({form(block + text("DBX)\\d+\\.[0-7]$"), text("DB_DBX"), "(%1)(\\d+\\.[0-7])"),
                          form(block + text("DBX)\\d+$"), text("DB_DBX_BYTE"), number),
                          formWithElement(block + text("(DB[BDW]))\\d+$"), "DB_", number, 0)});
}

AddressFamily dataFiles()
{
    const QString file = text("0*(?:25[0-5]|2[0-4]\\d|1\\d\\d|[1-9]\\d|9):)\\d+");
    const char *const element = "(%1)(\\d+/%2)";
    std::vector<FamilyForm> forms = {
        formWithElement(text("^(C") + file + text("/(C[UD]|DN|OV|U[AN])$"), "COUNTER_", element, 0),
        formWithElement(text("^(T") + file + text("/(EN|TT|DN)$"), "TIMER_", element, 0),
    };
    const struct
    {
        const char *letter;
        const char *name;
    } types[] = {{"B", "BINARY"}, {"C", "COUNTER"}, {"F", "FLOAT"}, {"N", "NUMBER"}, {"T", "TIMER"}};
    for (const auto &type : types) {
        const QString start = text("^(") + text(type.letter) + file;
        const QString name = text(type.name);
        const QLatin1String letter(type.letter);
        if (letter == QLatin1String("C") || letter == QLatin1String("T")) {
            constexpr int sizeOfElement = 4; // ".ACC"
            forms.push_back(formWithElement(start + text("\\.(ACC|PRE)$"), "", "(%1)(\\d+)\\.%2", sizeOfElement));
            forms.back().base = name + QLatin1Char('_');
        }
        if (letter != QLatin1String("F"))
            forms.push_back(
                form(start + text("/(?:1[0-5]|0?\\d)$"), name + text("_BIT"), "(%1)(\\d+/(?:1[0-5]|0?\\d))"));
        forms.push_back(form(start + text("$"), name, "(%1)(\\d+)"));
    }
    return AddressFamily(std::move(forms));
}

AddressFamily moduleBuffers()
{
    return AddressFamily({form(text("^(U\\d+\\\\G)\\d+$"), text("MOD_ACCESS_DEV"), "(%1)(\\d+)")});
}

/// The name in any letter case.
QString inAnyCase(const char *name)
{
    QString pattern;
    for (const char *letter = name; *letter != '\0'; ++letter) {
        const QChar character = QLatin1Char(*letter);
        pattern += QLatin1Char('[') + character + character.toLower();
        // Without letter case, the long s is an s.
        constexpr ushort longS = 0x17f;
        if (character == QLatin1Char('S'))
            pattern += QChar(longS);
        pattern += QLatin1Char(']');
    }
    return pattern;
}

AddressFamily driveParameters()
{
    const QString index = text("(?:0*(?:6553[0-5]|655[0-2]\\d|65[0-4]\\d\\d|6[0-4]\\d{3}|[1-5]?\\d{1,4}))");
    const QString subindex = text(":(?:0*\\d{1,3}):)");
    QStringList names;
    for (const char *const name :
         {"FLOAT32", "INT32Q16", "INT32", "USIGN32", "FIXPT16", "INT16", "USIGN16", "INT8", "USIGN8"})
        names.append(inAnyCase(name));
    std::vector<FamilyForm> forms = {
        form(text("^(USIGN32") + subindex + index + text("\\.(?:3[01]|[0-2]?\\d)$"), text("USIGN32_NO_IDX_BIT"),
             "(%1)(\\d+\\.(?:3[01]|[0-2]?\\d))"),
        form(text("^(USIGN16") + subindex + index + text("\\.(?:1[0-5]|0?\\d)$"), text("USIGN16_NO_IDX_BIT"),
             "(%1)(\\d+\\.(?:1[0-5]|0?\\d))"),
        form(text("^(USIGN8") + subindex + index + text("\\.[0-7]$"), text("USIGN8_NO_IDX_BIT"), "(%1)(\\d+\\.[0-7])"),
        // The name of the type as typed: a template with other letters is not found.
        formWithElement(text("^((") + inAnyCase("STRING") + QLatin1Char(')') + subindex + text("0$"), "", "(%1)(\\d+)",
                        0),
        formWithElement(text("^((") + names.join(QLatin1Char('|')) + QLatin1Char(')') + subindex + index + text("$"),
                        "", "(%1)(\\d+)", 0),
    };
    forms[3].baseEnd = text("_NO");
    forms[4].baseEnd = text("_NO_IDX");
    return AddressFamily(std::move(forms));
}

template<AddressFamily (*make)()>
const AddressFamily &familyMadeBy()
{
    static const AddressFamily family = make();
    return family;
}

bool isBitOf(const FamilyForm &form, QLatin1String base)
{
    return form.base == base && form.rowPattern.contains(QLatin1Char('/'));
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

DefaultCreator::DefaultCreator()
    : FamilyCreator(familyMadeBy<noFamilies>())
{
}

IsoOnTcpCerator::IsoOnTcpCerator()
    : FamilyCreator(familyMadeBy<dataBlocks>())
{
}

DF1Creator::DF1Creator()
    : FamilyCreator(familyMadeBy<dataFiles>())
{
}

bool DF1Creator::create(const QString &address, DynamicLabelItem &item)
{
    const bool isRecognised = foresee(address, item);
    const FamilyForm *const found = family().formOf(address);
    if (!found || !isBitOf(*found, QLatin1String("COUNTER_")))
        lastTimer = found && isBitOf(*found, QLatin1String("TIMER_")) ? item.prefixSymbol : QString();
    atRest = lastTimer.isEmpty();
    return isRecognised;
}

bool DF1Creator::foresee(const QString &address, DynamicLabelItem &item) const
{
    const bool isRecognised = FamilyCreator::foresee(address, item);
    if (isRecognised && isBitOf(*family().formOf(address), QLatin1String("COUNTER_")))
        item.prefixSymbol = lastTimer;
    return isRecognised;
}

Fx5uEthCreator::Fx5uEthCreator()
    : FamilyCreator(familyMadeBy<moduleBuffers>())
{
}

LustBusCreator::LustBusCreator()
    : FamilyCreator(familyMadeBy<driveParameters>())
{
}

} // namespace label
