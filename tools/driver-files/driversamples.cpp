// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "driversamples.h"

#include <QFile>
#include <QHash>

namespace {

const QLatin1String absent("-");

const QHash<QString, int> &filters()
{
    static const QHash<QString, int> known = {
        {QStringLiteral("any"), -1}, {QStringLiteral("bit"), 0}, {QStringLiteral("register"), 2}};
    return known;
}

QStringList sampleColumns()
{
    return {QStringLiteral("verdict"), QStringLiteral("address"), QStringLiteral("filter"),
            QStringLiteral("symbol"),  QStringLiteral("number"),  QStringLiteral("bit"),
            QStringLiteral("step"),    QStringLiteral("next"),    QStringLiteral("register")};
}

/// In the order of the data types.
QStringList stepNames()
{
    return {QStringLiteral("bit"),   QStringLiteral("byte"),  QStringLiteral("word"),
            QStringLiteral("dword"), QStringLiteral("qword"), QStringLiteral("text")};
}

QString textOf(const QString &field)
{
    return field == absent ? QString() : field;
}

class SampleReader
{
public:
    SampleReader(const QString &path, QList<DriverFileError> &errors)
        : m_path(path)
        , m_errors(errors)
    {
    }

    QList<DriverSample> read()
    {
        QFile file(m_path);
        if (!file.open(QIODevice::ReadOnly)) {
            fail(QStringLiteral("cannot be read (%1)").arg(file.errorString()));
            return m_samples;
        }
        QList<QByteArray> lines = file.readAll().split('\n');
        if (lines.last().isEmpty())
            lines.removeLast();
        for (const QByteArray &line : qAsConst(lines))
            readLine(QString::fromUtf8(line));
        if (!m_hasHeader)
            fail(QStringLiteral("no header line"));
        return m_samples;
    }

private:
    void fail(const QString &text) { m_errors.append({m_path, qMax(1, m_line), text}); }

    void readLine(const QString &line)
    {
        ++m_line;
        if (line.startsWith(QLatin1Char('#')) || line.isEmpty())
            return;
        const QStringList fields = line.split(QLatin1Char('\t'));
        if (m_hasHeader) {
            readSample(fields);
            return;
        }
        m_hasHeader = true;
        if (fields != sampleColumns())
            fail(QStringLiteral("the header must be: ") + sampleColumns().join(QLatin1Char(' ')));
    }

    void readSample(const QStringList &fields)
    {
        if (fields.size() != sampleColumns().size()) {
            fail(QStringLiteral("%1 columns, but a sample has %2").arg(fields.size()).arg(sampleColumns().size()));
            return;
        }
        const int errorsBefore = m_errors.size();
        DriverSample sample;
        sample.file = m_path;
        sample.line = m_line;
        sample.isAccepted = fields.at(0) == QLatin1String("accept");
        sample.address = fields.at(1);
        if (!sample.isAccepted && fields.at(0) != QLatin1String("refuse"))
            fail(QStringLiteral("the verdict '%1' is neither accept nor refuse").arg(fields.at(0)));
        if (!filters().contains(fields.at(2)))
            fail(QStringLiteral("the filter '%1' is not one of any, bit, register").arg(fields.at(2)));
        sample.filter = filters().value(fields.at(2), -1);
        if (sample.isAccepted)
            readAnswers(fields, sample);
        if (m_errors.size() == errorsBefore)
            m_samples.append(sample);
    }

    void readAnswers(const QStringList &fields, DriverSample &sample)
    {
        bool isNumber = false;
        bool isBit = false;
        sample.symbol = textOf(fields.at(3));
        sample.number = fields.at(4).toInt(&isNumber);
        sample.bit = fields.at(5).toInt(&isBit);
        sample.step = stepNames().indexOf(fields.at(6));
        sample.next = textOf(fields.at(7));
        sample.registerAddress = textOf(fields.at(8));
        if (!isNumber)
            fail(QStringLiteral("the number '%1' is not valid").arg(fields.at(4)));
        if (!isBit)
            fail(QStringLiteral("the bit '%1' is not a number").arg(fields.at(5)));
        if (sample.step < 0)
            fail(QStringLiteral("the step '%1' is not one of %2")
                     .arg(fields.at(6), stepNames().join(QLatin1String(", "))));
    }

    const QString m_path;
    QList<DriverFileError> &m_errors;
    QList<DriverSample> m_samples;
    int m_line = 0;
    bool m_hasHeader = false;
};

} // namespace

QList<DriverSample> readDriverSamples(const QString &path, QList<DriverFileError> &errors)
{
    return SampleReader(path, errors).read();
}
