// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_SHIPPEDDRIVERSTEST_H
#define ZELMAR_LABEL_TESTS_SHIPPEDDRIVERSTEST_H

#include "tools/driver-files/driversamples.h"
#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QRegExp>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QTest>

/// The drivers in their database.
namespace shipped {

/// The types of a bit and a register in `addressValidation`.
constexpr int bitRow = 0;
constexpr int registerRow = 2;

struct DeviceRow
{
    QString pattern;
    int type;
    int group;
    QString description;
    QString symbol;
    QString start;
    QString end;
    int dataSize;
    QString rule;
    int base;
    int blocksize;
    QString continueRule;

    bool isBit() const { return type == CommunicatorCommand::Bit; }
    bool isScripted() const { return rule.startsWith(QLatin1String("F>")); }
    bool isTemplate() const { return QRegExp(pattern).captureCount() == 0; }
};

struct ShippedDriver
{
    QString name;
    QString stem;
    int blockSize = 0;
    int bitBlockSize = 0;
    QList<DeviceRow> rows;
    QList<DriverSample> samples;
};

/// The faults, one per line, so that one run shows all of them.
class Complaints
{
public:
    void add(const QString &where, const QString &what) { m_lines.append(where + QLatin1String(": ") + what); }
    void expect(bool holds, const QString &where, const QString &what)
    {
        if (!holds)
            add(where, what);
    }
    template<typename T>
    void expectEqual(const T &seen, const T &wanted, const QString &where, const char *what)
    {
        if (seen != wanted)
            add(where, QStringLiteral("%1 is '%2', not '%3'").arg(QLatin1String(what)).arg(seen).arg(wanted));
    }
    bool isEmpty() const { return m_lines.isEmpty(); }
    QByteArray text() const
    {
        return '\n' + m_lines.mid(0, 40).join(QLatin1Char('\n')).toUtf8() + '\n' + QByteArray::number(m_lines.size()) +
               " complaints";
    }

private:
    QStringList m_lines;
};

#define VERIFY_NONE(complaints) QVERIFY2((complaints).isEmpty(), (complaints).text().constData())

QList<DeviceRow> readRows(const QSqlDatabase &db, const QString &table);

label::LabelLoader *labelOf(const QString &driver);

/// Bits and registers may be written alike: a timer's contact and its value are both T0 with different data types.
int filterOf(int rowType);

/// A test program for the labels of all shipped drivers, one after the other.
class ShippedDriversTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void initTestCase();

protected:
    /// A row of data for each driver, and the driver of the current one.
    void driverRows() const;
    const ShippedDriver &driver() const;

    QList<ShippedDriver> m_drivers;
};

} // namespace shipped

#endif
