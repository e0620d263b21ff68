// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "driverfile.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

const QChar tab = QLatin1Char('\t');
const QChar lineEnd = QLatin1Char('\n');

QStringList settingNames()
{
    return {QStringLiteral("driver"), QStringLiteral("block_size"), QStringLiteral("bit_block_size")};
}

bool isComment(const QString &line)
{
    return line.isEmpty() || line.startsWith(QLatin1Char('#'));
}

bool isWholeNumber(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar character) {
        return character >= QLatin1Char('0') && character <= QLatin1Char('9');
    });
}

bool mayBeEmpty(const QString &column)
{
    return column == QLatin1String("prefix_symbol") || column == QLatin1String("multiple_rule") ||
           column == QLatin1String("catch_table");
}

constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

/// Reads the lines of one driver file.
class DriverFileReader
{
public:
    DriverFileReader(const QString &path, QList<DriverFileError> &errors)
        : m_errors(errors)
    {
        m_driver.source = path;
        m_driver.stem = QFileInfo(path).completeBaseName();
    }

    DriverText read()
    {
        QFile file(m_driver.source);
        if (!file.open(QIODevice::ReadOnly)) {
            fail(1, QStringLiteral("cannot be read (%1)").arg(file.errorString()));
            return m_driver;
        }
        if (!isGoodStem(m_driver.stem))
            fail(1, QStringLiteral(
                        "the file name must be lower-case letters, digits and '_', because it names the tables"));
        QList<QByteArray> lines = file.readAll().split('\n');
        if (lines.last().isEmpty())
            lines.removeLast();
        for (const QByteArray &line : qAsConst(lines))
            readLine(line);
        finish();
        return m_driver;
    }

private:
    void fail(int line, const QString &text) { m_errors.append({m_driver.source, line, text}); }
    void fail(const QString &text) { fail(m_line, text); }

    /// Some editors write whole files in this way: report once and continue without it.
    QByteArray withoutForeignMarks(QByteArray bytes)
    {
        if (m_line == 1 && bytes.startsWith(byteOrderMark)) {
            fail(QStringLiteral("byte order mark: save the file as UTF-8 without one"));
            bytes.remove(0, int(sizeof byteOrderMark) - 1);
        }
        if (!bytes.contains('\r'))
            return bytes;
        if (!m_hasCarriageReturn)
            fail(QStringLiteral("carriage return: save the file with line feeds only, as sed -i 's/\\r$//' FILE does"));
        m_hasCarriageReturn = true;
        return bytes.replace('\r', QByteArray());
    }

    void readLine(const QByteArray &line)
    {
        ++m_line;
        const QByteArray bytes = withoutForeignMarks(line);
        readLine(bytes, QString::fromUtf8(bytes));
    }

    void readLine(const QByteArray &bytes, const QString &line)
    {
        if (line.toUtf8() != bytes)
            fail(QStringLiteral("not UTF-8"));
        else if (isComment(line))
            m_comments.append(line);
        else
            readFields(line.split(tab));
    }

    void readFields(const QStringList &fields)
    {
        if (m_driver.headerLine > 0)
            readRow(fields);
        else if (fields.first() == QLatin1String("pattern") || fields.size() > 2)
            readHeader(fields);
        else
            readSetting(fields);
    }

    void readSetting(const QStringList &fields)
    {
        m_driver.headComments += takeComments();
        if (fields.size() != 2) {
            fail(QStringLiteral("%1 columns, but a setting has 2").arg(fields.size()));
            return;
        }
        const QString &name = fields.first();
        if (!settingNames().contains(name)) {
            fail(QStringLiteral("unknown header '%1'").arg(name));
            return;
        }
        if (m_settings.contains(name))
            fail(QStringLiteral("'%1' appears twice").arg(name));
        m_settings.append(name);
        takeSetting(name, fields.last());
        const QString fault = valueFault(name, fields.last());
        if (!fault.isEmpty())
            fail(fault);
    }

    void takeSetting(const QString &name, const QString &value)
    {
        if (name == QLatin1String("block_size")) {
            m_driver.blockSize = value;
        } else if (name == QLatin1String("bit_block_size")) {
            m_driver.bitBlockSize = value;
        } else {
            m_driver.name = value;
            m_driver.nameLine = m_line;
        }
    }

    void readHeader(const QStringList &columns)
    {
        m_driver.headerComments = takeComments();
        m_driver.headerLine = m_line;
        m_driver.columns = columns;
        QStringList seen;
        for (const QString &column : columns) {
            if (!driverColumns().contains(column))
                fail(QStringLiteral("unknown header '%1'").arg(column));
            else if (seen.contains(column))
                fail(QStringLiteral("header '%1' appears twice").arg(column));
            seen.append(column);
        }
        const QStringList wanted = driverColumns();
        for (const QString &column : wanted) {
            if (!columns.contains(column))
                fail(QStringLiteral("header '%1' is missing").arg(column));
        }
        const QStringList settings = settingNames();
        for (const QString &name : settings) {
            if (!m_settings.contains(name))
                fail(QStringLiteral("'%1' must be before the header").arg(name));
        }
    }

    void readRow(const QStringList &fields)
    {
        DriverRow row;
        row.line = m_line;
        row.fields = fields;
        row.comments = takeComments();
        m_driver.rows.append(row);
        if (fields.size() != m_driver.columns.size()) {
            fail(QStringLiteral("%1 columns, but the header has %2").arg(fields.size()).arg(m_driver.columns.size()));
            return;
        }
        for (int i = 0; i < fields.size(); ++i) {
            const QString fault = valueFault(m_driver.columns.at(i), fields.at(i));
            if (!fault.isEmpty())
                fail(fault);
        }
    }

    void finish()
    {
        m_driver.tailComments = takeComments();
        if (m_line == 0)
            fail(1, QStringLiteral("empty file"));
        else if (m_driver.headerLine == 0)
            fail(QStringLiteral("no header line"));
        else if (m_driver.rows.isEmpty())
            fail(QStringLiteral("no rows"));
    }

    QStringList takeComments()
    {
        QStringList taken;
        taken.swap(m_comments);
        return taken;
    }

    QList<DriverFileError> &m_errors;
    DriverText m_driver;
    QStringList m_settings;
    QStringList m_comments;
    int m_line = 0;
    bool m_hasCarriageReturn = false;
};

bool holdsSeparator(const QString &field)
{
    return field.contains(tab) || field.contains(lineEnd) || field.contains(QLatin1Char('\r'));
}

} // namespace

QString DriverText::field(const DriverRow &row, const QString &column) const
{
    return row.fields.value(columns.indexOf(column));
}

QString DriverFileError::toString() const
{
    return QStringLiteral("%1:%2: error: %3").arg(file, QString::number(line), text);
}

QStringList driverColumns()
{
    static const QStringList columns = {
        QStringLiteral("pattern"),     QStringLiteral("type"),          QStringLiteral("address_group_index"),
        QStringLiteral("description"), QStringLiteral("prefix_symbol"), QStringLiteral("start"),
        QStringLiteral("end"),         QStringLiteral("data_size"),     QStringLiteral("multiple_rule"),
        QStringLiteral("catch_table"), QStringLiteral("base"),          QStringLiteral("blocksize"),
        QStringLiteral("continue")};
    return columns;
}

bool isNumberColumn(const QString &column)
{
    return column == QLatin1String("type") || column == QLatin1String("address_group_index") ||
           column == QLatin1String("data_size") || column == QLatin1String("base") ||
           column == QLatin1String("blocksize");
}

QString valueFault(const QString &name, const QString &value)
{
    const bool isNumber = isNumberColumn(name) || (settingNames().contains(name) && name != QLatin1String("driver"));
    if (value.isEmpty())
        return mayBeEmpty(name) ? QString() : QStringLiteral("'%1' is empty").arg(name);
    if (!isNumber)
        return QString();
    if (!isWholeNumber(value))
        return QStringLiteral("'%1' is not a number: '%2'").arg(name, value);
    bool fits = false;
    value.toInt(&fits);
    return fits ? QString() : QStringLiteral("'%1' is too large a number: '%2'").arg(name, value);
}

bool isGoodStem(const QString &stem)
{
    static const QRegularExpression good(QStringLiteral("^[a-z][a-z0-9_]*\\z"));
    return good.match(stem).hasMatch();
}

DriverText readDriverFile(const QString &path, QList<DriverFileError> &errors)
{
    return DriverFileReader(path, errors).read();
}

QByteArray driverFileText(const DriverText &driver)
{
    QStringList lines = driver.headComments;
    lines.append(QLatin1String("driver\t") + driver.name);
    lines.append(QLatin1String("block_size\t") + driver.blockSize);
    lines.append(QLatin1String("bit_block_size\t") + driver.bitBlockSize);
    lines.append(driver.headerComments);
    lines.append(driver.columns.join(tab));
    for (const DriverRow &row : driver.rows) {
        lines.append(row.comments);
        lines.append(row.fields.join(tab));
    }
    lines.append(driver.tailComments);
    return lines.join(lineEnd).toUtf8() + '\n';
}

QString textFormObstacle(const DriverText &driver)
{
    if (holdsSeparator(driver.name))
        return QStringLiteral("the driver's name contains a tab or a line end");
    for (int i = 0; i < driver.rows.size(); ++i) {
        const QStringList &fields = driver.rows.at(i).fields;
        if (std::any_of(fields.begin(), fields.end(), holdsSeparator))
            return QStringLiteral("row %1 contains a tab or a line end").arg(i + 1);
        if (!fields.isEmpty() && fields.first().startsWith(QLatin1Char('#')))
            return QStringLiteral("row %1 begins with '#' and would be read as a comment").arg(i + 1);
    }
    return QString();
}
