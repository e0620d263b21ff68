// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintcontext.h"

#include "zelmar_label/address_grammar/multiplerule.h"
#include "zelmar_label/address_grammar/scripthook.h"

#include <QFileInfo>

using label::MultipleRule;

namespace {

const QLatin1String scriptMark("F>");

class RuleCheck
{
public:
    RuleCheck(const LintContext &context, const LintRow &row)
        : m_context(context)
        , m_row(row)
        , m_rule(row.formatter.rule())
    {
    }

    void run()
    {
        if (isForScript() || m_row.isScripted)
            checkFile();
        else if (m_row.isBit())
            checkBitRule();
        else
            checkPlainRule();
    }

private:
    void error(const char *id, const QString &what, const QString &advice)
    {
        m_context.report.rowError(m_row.index, id, "multiple_rule", what, advice);
    }

    bool isForScript() const { return m_rule.text.startsWith(scriptMark); }

    /// Every rule names a file by its text from the third character on.
    void checkFile()
    {
        const QString name = m_rule.text.mid(2);
        if (isForScript() && !m_row.isScripted)
            error("script-missing", QStringLiteral("the script '%1' is not in the folder scripts").arg(name),
                  QStringLiteral("put it into the folder \"scripts\" beside the program, or correct the name"));
        else if (!isForScript())
            error("script-accident",
                  QStringLiteral("the rule '%1' names the file '%2', which is in the folder scripts, so the rule is "
                                 "ignored")
                      .arg(m_rule.text, name),
                  QStringLiteral("rename the file; if the script is meant, write the rule 'F>%1'").arg(name));
    }

    bool isCompound() const { return m_rule.isSplit() || m_rule.isOnePart(); }

    /// The text as a whole has the shape of a compound rule.
    bool hasCompoundShape() const
    {
        return m_rule.text == m_rule.separatorWord + QLatin1Char('-') + m_rule.bitRadixWord + m_rule.registerTail;
    }

    void checkBitRule()
    {
        if (!hasCompoundShape()) {
            error("bit-rule-plain",
                  QStringLiteral(
                      "a bit row needs a rule of the form separator-radix:tail, but '%1' has another form: the number "
                      "and the bit of an address cannot be read")
                      .arg(m_rule.text),
                  QStringLiteral("write a rule such as 'dot-dec:r', or 'union-dec:n' if no register holds the bit"));
            return;
        }
        if (!isCompound())
            unknownWord(m_rule.separatorWord, "separator", "dot, slash, last1, last2, union, nosep");
        else if (!isRadixKnown())
            unknownWord(m_rule.bitRadixWord, "radix",
                        m_rule.isOnePart() ? "dec, oct, hex" : "dec, 15, 31, f, hex, oct, fam3");
        else
            checkTail();
    }

    void unknownWord(const QString &word, const char *kind, const char *known)
    {
        error("rule-word",
              QStringLiteral("unknown %1 '%2' in the rule '%3'").arg(QLatin1String(kind), word, m_rule.text),
              QStringLiteral("use one of %1").arg(QLatin1String(known)));
    }

    bool isRadixKnown() const
    {
        if (m_rule.isOnePart())
            return m_rule.bitRadix() >= 0;
        // "fam3" has no radix for runs, but its bits can be read.
        return m_rule.bitOffset(QLatin1String("01") + m_rule.splitString() + QLatin1String("01")) >= 0;
    }

    void checkTail()
    {
        const QString words = m_rule.registerTail.section(QLatin1Char('_'), 0, 0).toLower();
        const bool appendsBit = m_rule.wordPart(QStringLiteral("000")).endsWith(QLatin1String("01"));
        const bool isKnown = words == QLatin1String(":n") || words == QLatin1String(":r") || m_rule.hasAlignment() ||
                             appendsBit || words == QLatin1String(":");
        if (!isKnown)
            unknownWord(m_rule.registerTail, "tail", ":n, :r, :rm8, :rm8a1, :rm16, :rm16a1, :rm64a1, :rfam3");
        else if (m_rule.isOnePart() && m_rule.canConvertToRegister() &&
                 m_rule.registerAlignment() == MultipleRule::Alignment::None)
            error("rule-word",
                  QStringLiteral("the rule '%1' says that a register holds the bit, but not which one: a plain bit "
                                 "number needs the number of bits in a register")
                      .arg(m_rule.text),
                  QStringLiteral("write ':rm8', ':rm8a1', ':rm16' or ':rm16a1', or ':n' for no register"));
    }

    void checkPlainRule()
    {
        const bool isKnown = m_rule.text.isEmpty() || m_rule.hasAlignment() || !m_rule.needOptimize() ||
                             m_rule.isSemenseSepcialType() || isCompound();
        if (!isKnown)
            unknownWord(m_rule.text, "word", "n, m8, m8a1, m16, m16a1, m64a1, semens1");
    }

    const LintContext &m_context;
    const LintRow &m_row;
    const MultipleRule &m_rule;
};

} // namespace

void lintRules(LintContext &context)
{
    for (const LintRow &row : context.rows)
        RuleCheck(context, row).run();
}
