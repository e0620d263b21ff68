// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintaddresses.h"

#include "zelmar_label/address_grammar/radixnumber_p.h"
#include "zelmar_label/label_store/dynamiclabelcreators.h"
#include "zelmar_label/label_table/dynamicmember_p.h"

#include <QHash>
#include <QSet>

#include <algorithm>

using namespace label;

namespace {

/// More texts of a row than this show nothing new.
constexpr int mostAddresses = 32;
/// This many texts of a row get the numbers at the row's ends.
constexpr int mostWithEnds = 8;
/// Texts of the pattern to examine, of so many samples of its automaton.
constexpr int mostTexts = 40;
constexpr int mostSamples = 1000;

bool isBeyondAscii(const QString &text)
{
    constexpr int lastAscii = 127;
    return std::any_of(text.begin(), text.end(), [](QChar character) { return character.unicode() > lastAscii; });
}

/// Texts of the pattern of all lengths, in ASCII. None for a pattern without automaton.
QStringList textsOf(const Pattern &pattern)
{
    if (!pattern.automaton())
        return {};
    QStringList samples = pattern.automaton()->samples(mostSamples);
    samples.erase(std::remove_if(samples.begin(), samples.end(), isBeyondAscii), samples.end());
    // Texts of all lengths come first, since samples of one length are alike.
    const int step = samples.size() / mostAddresses + 1;
    QStringList texts;
    for (int first = 0; first < step; ++first) {
        for (int place = first; place < samples.size(); place += step)
            texts.append(samples.at(place));
    }
    return texts.mid(0, mostTexts);
}

class AddressMaker
{
public:
    AddressMaker(LintRow &row, const QList<DriverSample> &samples)
        : m_row(row)
    {
        const CommandFormatter &formatter = row.formatter;
        take(describedAddress(formatter));
        if (row.hasLimits()) {
            take(row.symbolAddress(*row.first));
            take(row.symbolAddress(*row.last));
        }
        const QStringList texts = textsOf(row.pattern());
        for (const QString &text : texts)
            take(text);
        for (const DriverSample &sample : samples) {
            if (m_row.addresses.size() >= mostAddresses)
                return;
            if (sample.isAccepted && formatter.isDeviceAddressValid(sample.address))
                take(sample.address);
        }
    }

private:
    void take(const QString &text)
    {
        if (m_row.addresses.size() >= mostAddresses || text.isEmpty() || text.contains(QLatin1Char('-')) ||
            m_seen.contains(text) || m_row.formatter.matchedFront(text) <= text.size())
            return;
        m_seen.insert(text);
        m_row.matches.append(text);
        accept(text);
        takeNumbers(text);
    }

    void accept(const QString &text)
    {
        if (m_row.addresses.size() < mostAddresses && !m_row.addresses.contains(text) &&
            m_row.formatter.isDeviceAddressValid(text))
            m_row.addresses.append(text);
    }

    /// The text with its number replaced by the ends of the row and a number between them.
    void takeNumbers(const QString &text)
    {
        if (!m_row.hasLimits() || m_row.matches.size() > mostWithEnds)
            return;
        const int first = *m_row.first;
        const int last = *m_row.last;
        const int unit = qMax(1, m_row.formatter.aligmentSize());
        const int middle = first + (last - first) / 2 / unit * unit;
        const int width = m_row.formatter.getRangeString(text).size();
        for (const int number : {first, last, middle}) {
            const QString digits = numberText(number, m_row.formatter.base());
            accept(m_row.formatter.withNumber(text, digits));
            // For notations with a fixed number of digits.
            accept(m_row.formatter.withNumber(text, digits.rightJustified(width, QLatin1Char('0'))));
        }
    }

    LintRow &m_row;
    QSet<QString> m_seen;
};

} // namespace

void makeAddresses(LintRow &row, const QList<DriverSample> &samples)
{
    const AddressMaker maker(row, samples);
}

DynamicLabelCreatorInterface &familyCreator(const QString &driver)
{
    // Kept to the end of the process, since a creator cannot be freed completely.
    static auto &creators = *new QHash<QString, DynamicLabelCreatorInterface *>;
    DynamicLabelCreatorInterface *&creator = creators[driver];
    if (!creator)
        creator = createDynamicLabelCreator(driver);
    return *creator;
}

QStringList familyAddresses()
{
    QStringList addresses = {QStringLiteral("DB1.DBX0.0"), QStringLiteral("DB1.DBX0"), QStringLiteral("DB1.DBB0"),
                             QStringLiteral("DB1.DBW0"),   QStringLiteral("DB1.DBD0"), QStringLiteral("U0\\G0"),
                             QStringLiteral("STRING:0:0")};
    for (const char *file : {"B", "C", "F", "N", "T"}) {
        addresses.append(QLatin1String(file) + QLatin1String("9:0"));
        addresses.append(QLatin1String(file) + QLatin1String("9:0/0"));
    }
    for (const char *element : {"/EN", "/TT", "/DN", ".ACC", ".PRE"})
        addresses.append(QLatin1String("T9:0") + QLatin1String(element));
    for (const char *element : {"/CU", "/CD", "/DN", "/OV", "/UA", "/UN", ".ACC", ".PRE"})
        addresses.append(QLatin1String("C9:0") + QLatin1String(element));
    for (const char *type :
         {"USIGN32", "USIGN16", "USIGN8", "FLOAT32", "INT32Q16", "INT32", "FIXPT16", "INT16", "INT8"})
        addresses.append(QLatin1String(type) + QLatin1String(":0:0"));
    for (const char *type : {"USIGN32", "USIGN16", "USIGN8"})
        addresses.append(QLatin1String(type) + QLatin1String(":0:0.0"));
    return addresses;
}

bool becomeMember(LintRow &row, const QString &driver)
{
    const QStringList addresses = QStringList{describedAddress(row.formatter)} + familyAddresses();
    for (const QString &address : addresses) {
        DynamicMember member;
        if (!familyCreator(driver).create(address, member.item) || member.item.basePattern != row.formatter.pattern())
            continue;
        member.shape(row.formatter);
        return true;
    }
    return false;
}
