// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintcontext.h"

#include "zelmar_label/address_grammar/multiplerule.h"
#include "zelmar_label/address_grammar/radixnumber_p.h"

using namespace label;

namespace {

/// Usual bit parts: decimal and hexadecimal, with and without a leading zero.
QStringList bitTexts()
{
    QStringList texts;
    constexpr int beyondAnyWord = 64;
    for (int bit = 0; bit < beyondAnyWord; ++bit) {
        texts.append(QString::number(bit));
        texts.append(QString::number(bit).rightJustified(2, QLatin1Char('0')));
    }
    for (const char letter : {'a', 'b', 'c', 'd', 'e', 'f', 'A', 'B', 'C', 'D', 'E', 'F'})
        texts.append(QString(QLatin1Char(letter)));
    return texts;
}

/// Compares the bits that a pattern accepts with those that the rule can read and step to.
class BitCheck
{
public:
    BitCheck(const LintContext &context, const LintRow &row)
        : m_context(context)
        , m_row(row)
        , m_rule(row.formatter.rule())
    {
    }

    void run()
    {
        static const QStringList texts = bitTexts();
        for (const QString &bit : texts) {
            const QString address = withBit(bit);
            if (!m_row.formatter.isDeviceAddressValid(address))
                continue;
            if (!fits(address))
                return;
            checkLimits(address);
        }
    }

private:
    void fail(const QString &what, const QString &advice)
    {
        m_context.report.rowError(m_row.index, "bit-radix", "multiple_rule", what, advice);
    }

    /// An address of the row with this bit part.
    QString withBit(const QString &bit) const
    {
        const QString &address = m_row.addresses.first();
        const QString range = m_row.formatter.getRangeString(address);
        const int begin = address.lastIndexOf(range);
        const QString tail = m_rule.bitTail(range);
        const QString separator = tail.left(m_rule.splitString().size());
        return address.left(begin + range.size() - tail.size()) + separator + bit + address.mid(begin + range.size());
    }

    bool fits(const QString &address)
    {
        const int offset = m_row.formatter.getbitOffset(address);
        if (offset < 0) {
            fail(
                QStringLiteral("the pattern accepts %1, whose bit the rule '%2' cannot read").arg(address, m_rule.text),
                QStringLiteral("give the rule the radix of the bit in the pattern, or narrow the pattern"));
            return false;
        }
        // Rules of this kind have no radix for a run.
        if (m_row.formatter.bitbase() < 0)
            return true;
        int word = 0;
        int bit = offset;
        m_row.formatter.bitOffsetCarry(word, bit, m_row.formatter.bitbase());
        if (word != 0) {
            fail(QStringLiteral("the pattern accepts %1, whose bit %2 is beyond the last one of the rule '%3'")
                     .arg(address, QString::number(offset), m_rule.text),
                 QStringLiteral("narrow the bit part of the pattern, or give the rule a radix word of wider words"));
            return false;
        }
        return isFollowed(address, offset);
    }

    /// Runs compare the bit, not the word, with the limits.
    void checkLimits(const QString &address)
    {
        const int offset = m_row.formatter.getbitOffset(address);
        // There are no runs without a radix.
        if (m_isCutTold || m_row.formatter.bitbase() < 0 || !m_row.hasLimits() || m_row.formatter.isRangeValid(offset))
            return;
        m_isCutTold = true;
        m_context.report.rowWarning(
            m_row.index, "bits-cut", offset < *m_row.first ? "start" : "end",
            QStringLiteral("runs omit bit %1, as in %2: they compare the bit with 'start' and 'end'")
                .arg(QString::number(offset), address),
            QStringLiteral("begin at 0 and end at the last bit or later; exclude words with the pattern"));
    }

    /// The rule must not step to bits that the pattern refuses.
    bool isFollowed(const QString &address, int offset)
    {
        CommunicatorCommand command;
        command.address = address;
        command.dataType = CommunicatorCommand::Bit;
        const QList<CommunicatorCommand> run = m_row.formatter.makeBitContinueCommand(command, 2, 1, false);
        const QString next = run.size() == 2 ? run.at(1).address : QString();
        if (next.isEmpty() || m_row.formatter.isDeviceAddressValid(next) || !isOfSameWord(address, next))
            return true;
        fail(QStringLiteral("the rule '%1' lets bit %2 be followed by %3, which the pattern refuses")
                 .arg(m_rule.text, QString::number(offset), next),
             QStringLiteral("give the rule the radix and the last bit of the pattern"));
        return false;
    }

    bool isOfSameWord(const QString &address, const QString &next) const
    {
        const QString range = m_row.formatter.getRangeString(address);
        const QString prefix = address.left(address.lastIndexOf(range));
        const QString word = numberText(m_row.formatter.getAddresRangePart(address), m_row.formatter.base());
        const QString front = prefix + word + m_rule.splitString();
        const int bitDigits = next.size() - front.size();
        return next.startsWith(front) && (!m_rule.splitString().isEmpty() || bitDigits == m_rule.minimumBitDigits());
    }

    const LintContext &m_context;
    const LintRow &m_row;
    const MultipleRule &m_rule;
    bool m_isCutTold = false;
};

} // namespace

void lintBits(LintContext &context)
{
    for (const LintRow &row : context.rows) {
        const bool isSplit = row.formatter.rule().isSplit();
        if (row.isBit() && isSplit && !row.isScripted && !row.addresses.isEmpty() && !context.report.isWrong(row.index))
            BitCheck(context, row).run();
    }
}
