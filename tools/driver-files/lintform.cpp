// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintcontext.h"

#include "sqliteconnection.h"

#include <QHash>
#include <QSqlError>
#include <QSqlQuery>

namespace {

class FormCheck
{
public:
    explicit FormCheck(const LintContext &context)
        : m_context(context)
        , m_driver(context.driver)
        , m_report(context.report)
    {
    }

    void run()
    {
        checkSettings();
        checkTables();
        checkColumns();
        for (int i = 0; i < m_driver.rows.size(); ++i)
            checkRow(i);
    }

private:
    void checkSettings()
    {
        checkSetting("driver", m_driver.name, QStringLiteral("give the driver the name that projects use"));
        const QString advice = QStringLiteral("give the most that one read may hold, at least 1");
        checkSetting("block_size", m_driver.blockSize, advice);
        checkSetting("bit_block_size", m_driver.bitBlockSize, advice);
        if (m_driver.name.contains(QLatin1Char('\'')))
            m_report.error("driver-name", QStringLiteral("driver"),
                           QStringLiteral("the name \"%1\" breaks the statement that looks for it").arg(m_driver.name),
                           QStringLiteral("remove the apostrophe from the name"));
        if (m_driver.rows.isEmpty() && !m_driver.columns.isEmpty())
            m_report.error("no-rows", QString(), QStringLiteral("the driver has no rows, so it refuses everything"),
                           QStringLiteral("add a row for each address format"));
    }

    void checkSetting(const char *name, const QString &value, const QString &advice)
    {
        const QString setting = QLatin1String(name);
        const QString fault = valueFault(setting, value);
        if (!fault.isEmpty())
            m_report.error("bad-value", setting, fault, advice);
        else if (setting != QLatin1String("driver") && value.toInt() < 1)
            m_report.error("driver-limit", setting, QStringLiteral("'%1' is %2").arg(setting, value), advice);
    }

    /// The library uses names in its statements without quotes.
    void checkTables()
    {
        for (const QString &table : {m_driver.generalTable, m_driver.deviceTable}) {
            const bool isFile = m_driver.generalTable.isEmpty() && m_driver.deviceTable.isEmpty();
            if (isFile || canBeSelected(table))
                continue;
            m_report.error(
                "table-name",
                table == m_driver.deviceTable ? QStringLiteral("device_table") : QStringLiteral("general_table"),
                QStringLiteral("the table name \"%1\" breaks the statement that reads the table").arg(table),
                QStringLiteral("use a name of letters, digits and '_' that begins with a letter and is not an "
                               "SQL keyword"));
        }
    }

    static bool canBeSelected(const QString &table)
    {
        const SqliteConnection connection(QStringLiteral(":memory:"), SqliteConnection::Mode::Write);
        QSqlQuery query(connection.database());
        QString quoted = table;
        quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
        return query.exec(QStringLiteral("CREATE TABLE \"%1\" (one)").arg(quoted)) &&
               query.exec(QStringLiteral("SELECT * FROM %1").arg(table));
    }

    void checkColumns()
    {
        if (m_driver.columns.isEmpty()) {
            // A table with an unreadable name was already reported.
            if (canBeSelected(m_driver.deviceTable))
                m_report.error("table-missing", QStringLiteral("device_table"),
                               QStringLiteral("there is no device table \"%1\"").arg(m_driver.deviceTable),
                               QStringLiteral("add the table, or correct its name in table_index"));
            return;
        }
        const QStringList wanted = driverColumns();
        for (const QString &column : wanted) {
            if (!m_driver.columns.contains(column))
                m_report.error("missing-column", column, QStringLiteral("the column '%1' is missing").arg(column),
                               QStringLiteral("add the column: without it no row of the driver is read"),
                               m_driver.headerLine);
        }
    }

    void checkRow(int index)
    {
        for (const QString &column : m_driver.columns)
            checkValue(index, column);
        checkWords(index);
        checkDoubled(index);
    }

    void checkValue(int index, const QString &column)
    {
        const QString value = m_driver.field(m_driver.rows.at(index), column);
        bool isNumber = false;
        const int number = value.toInt(&isNumber);
        // Reported by the checks that need the number.
        const bool isTold =
            isNumber && number < 0 && (column == QLatin1String("blocksize") || column == QLatin1String("data_size"));
        const QString fault = valueFault(column, value);
        if (fault.isEmpty() || isTold)
            return;
        m_report.rowError(index, "bad-value", column.toLatin1().constData(), fault,
                          isNumberColumn(column) ? QStringLiteral("give a number in digits")
                                                 : QStringLiteral("fill the field"));
    }

    void checkWords(int index)
    {
        const QString type = m_context.field(index, "type");
        if (valueFault(QStringLiteral("type"), type).isEmpty() && type.toInt() > 5)
            m_report.rowError(index, "type", "type", QStringLiteral("'type' is not 0 to 5: '%1'").arg(type),
                              QStringLiteral("give 0 bit, 1 byte, 2 word, 3 double word, 4 quad word or 5 text"));
        const QString base = m_context.field(index, "base");
        const int radix = base.toInt();
        if (valueFault(QStringLiteral("base"), base).isEmpty() && radix != 8 && radix != 10 && radix != 16)
            m_report.rowError(index, "base", "base", QStringLiteral("'base' is not 8, 10 or 16: '%1'").arg(base),
                              QStringLiteral("give the radix in which the number of an address is written"));
        const QString text = m_context.field(index, "continue");
        if (!text.isEmpty() && !isContinueText(text, m_driver.rows.at(index).line > 0))
            m_report.rowError(index, "continue", "continue",
                              QStringLiteral("'continue' is neither Y nor N: '%1'").arg(text),
                              QStringLiteral("write Y if blocks may not span gaps, else N"));
    }

    /// Files allow one spelling; the library accepts more.
    static bool isContinueText(const QString &text, bool isOfFile)
    {
        static const QStringList words = {QStringLiteral("y"), QStringLiteral("yes"), QStringLiteral("n"),
                                          QStringLiteral("no")};
        return isOfFile ? text == QLatin1String("Y") || text == QLatin1String("N") : words.contains(text.toLower());
    }

    void checkDoubled(int index)
    {
        const bool isBit = m_context.field(index, "type").toInt() == 0;
        // A query never asks for bits and registers together, so they may have the same text.
        const QString pattern = (isBit ? QLatin1Char('b') : QLatin1Char('r')) + m_context.field(index, "pattern");
        if (m_patterns.contains(pattern))
            m_report.rowError(index, "doubled-pattern", "pattern",
                              QLatin1String("the pattern is already used in ") + place(m_patterns.value(pattern)),
                              QStringLiteral("remove one of the two rows: only the first is used"));
        else
            m_patterns.insert(pattern, index);
        const QString description = m_context.field(index, "description");
        if (description.isEmpty())
            return;
        if (m_descriptions.contains(description))
            m_report.rowError(index, "doubled-description", "description",
                              QLatin1String("the description is already used in ") +
                                  place(m_descriptions.value(description)),
                              QStringLiteral("make the descriptions different: users choose by them"));
        else
            m_descriptions.insert(description, index);
    }

    QString place(int index) const
    {
        const int line = m_driver.rows.at(index).line;
        return line > 0 ? QStringLiteral("line %1").arg(line) : QStringLiteral("row %1").arg(index + 1);
    }

    const LintContext &m_context;
    const DriverText &m_driver;
    LintReport &m_report;
    QHash<QString, int> m_patterns;
    QHash<QString, int> m_descriptions;
};

} // namespace

void lintForm(const LintContext &context)
{
    FormCheck(context).run();
}
