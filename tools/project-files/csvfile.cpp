// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "csvfile.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QTextCodec>

#include <csv.h>

namespace {

/// The parser's state and its results.
class Reader
{
public:
    Reader()
        : m_utf8(QTextCodec::codecForName("UTF-8"))
    {
        csv_init(&m_parser, CSV_STRICT | CSV_STRICT_FINI);
    }
    ~Reader() { csv_free(&m_parser); }
    Q_DISABLE_COPY(Reader)

    CsvContent read(QIODevice &device)
    {
        for (int line = 1; m_content.error.isEmpty(); ++line) {
            QByteArray text = device.readLine();
            if (text.isEmpty())
                break;
            if (line == 1 && text.startsWith("\xef\xbb\xbf"))
                text.remove(0, 3);
            if (!m_isInRow)
                m_row.line = line;
            parse(text, line);
        }
        if (m_content.error.isEmpty() && csv_fini(&m_parser, &Reader::addField, &Reader::endRow, this) != 0)
            fail(m_row.line, QCoreApplication::translate("CsvFile", "a quote is opened and not closed"));
        return m_content;
    }

private:
    void parse(const QByteArray &text, int line)
    {
        m_hasEnded = false;
        const auto size = static_cast<std::size_t>(text.size());
        if (csv_parse(&m_parser, text.constData(), size, &Reader::addField, &Reader::endRow, this) != size)
            fail(line, QCoreApplication::translate("CsvFile", "unexpected quote (%1)")
                           .arg(QLatin1String(csv_strerror(csv_error(&m_parser)))));
        m_isInRow = !m_hasEnded && (m_isInRow || !text.trimmed().isEmpty());
    }

    void fail(int line, const QString &error)
    {
        if (!m_content.error.isEmpty())
            return;
        m_content.error = error;
        m_content.errorLine = line;
    }

    static void addField(void *text, std::size_t size, void *data)
    {
        auto *reader = static_cast<Reader *>(data);
        QTextCodec::ConverterState state;
        reader->m_row.fields.append(
            reader->m_utf8->toUnicode(static_cast<const char *>(text), static_cast<int>(size), &state));
        if (state.invalidChars > 0 || state.remainingChars > 0)
            reader->fail(reader->m_row.line, QCoreApplication::translate("CsvFile", "the text is not UTF-8"));
    }

    static void endRow(int, void *data)
    {
        auto *reader = static_cast<Reader *>(data);
        reader->m_content.rows.append(reader->m_row);
        reader->m_row.fields.clear();
        reader->m_hasEnded = true;
    }

    csv_parser m_parser = {};
    QTextCodec *m_utf8;
    CsvContent m_content;
    CsvRow m_row;
    bool m_isInRow = false;
    bool m_hasEnded = false;
};

} // namespace

CsvContent readCsv(QIODevice &device)
{
    return Reader().read(device);
}

QByteArray csvLine(const QStringList &fields)
{
    QByteArray line;
    for (const QString &field : fields) {
        const QByteArray text = field.toUtf8();
        const auto size = static_cast<std::size_t>(text.size());
        QByteArray quoted(static_cast<int>(csv_write(nullptr, 0, text.constData(), size)), '\0');
        csv_write(quoted.data(), static_cast<std::size_t>(quoted.size()), text.constData(), size);
        if (!line.isEmpty())
            line += ',';
        line += quoted;
    }
    return line;
}
