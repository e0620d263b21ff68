// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "worker.h"

#include "device.h"
#include "driverdatabase.h"
#include "fault.h"

#include "zelmar_label/label_table/rowdescription_p.h"

#include <QIODevice>
#include <QJsonArray>

namespace {

QString numberOrDash(int number)
{
    return number < 0 ? QStringLiteral("-") : QString::number(number);
}

QString textOrDash(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("-") : text;
}

QJsonValue numberOrNull(int number)
{
    return number < 0 ? QJsonValue() : QJsonValue(number);
}

QJsonValue textOrNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

/// The output for an accepted address.
struct Content
{
    Content(Device &device, const ResolvedAddress &address)
    {
        int registerRow = -1;
        if (device.row(address.row).type() == label::BitType)
            registerAddress = device.registerOfBit(address, registerRow);
        // Read last: the register may have added a row, which moves rows.
        const label::CommandFormatter &row = device.row(address.row);
        format = row.formatString();
        prefix = row.getEditorUsedPrefixsymbol();
        range = row.getEditorUsedRangeString(address.device);
        number = row.getAddresRangePart(address.device);
        bit = row.getbitOffset(address.device);
        dataType = label::dataTypeWord(row.type());
        if (!registerAddress.isEmpty())
            registerAddress = address.atStation(registerAddress);
    }

    QString format;
    QString prefix;
    QString range;
    int number = -1;
    int bit = -1;
    QString dataType;
    QString registerAddress;
};

QString acceptedAsJson(const ResolvedAddress &address, const Content &content)
{
    return JsonLine()
        .add("address", address.text)
        .add("valid", true)
        .add("station", numberOrNull(address.station))
        .add("typeIndex", address.row)
        .add("format", content.format)
        .add("prefix", content.prefix)
        .add("range", content.range)
        .add("number", numberOrNull(content.number))
        .add("bit", numberOrNull(content.bit))
        .add("dataType", content.dataType)
        .add("register", textOrNull(content.registerAddress))
        .add("reason", QJsonValue())
        .add("fault", QJsonValue())
        .add("suggestions", QJsonArray())
        .text();
}

QString refusedAsJson(const ResolvedAddress &address)
{
    const QJsonValue none;
    return JsonLine()
        .add("address", address.text)
        .add("valid", false)
        .add("station", numberOrNull(address.station))
        .add("typeIndex", none)
        .add("format", none)
        .add("prefix", none)
        .add("range", none)
        .add("number", none)
        .add("bit", none)
        .add("dataType", none)
        .add("register", none)
        .add("reason", address.reason)
        .add("fault", faultAsJson(address))
        .add("suggestions", QJsonArray::fromStringList(address.suggestions))
        .text();
}

QStringList acceptedCells(const ResolvedAddress &address, const Content &content)
{
    return {QStringLiteral("ok"),
            address.text,
            numberOrDash(address.station),
            textOrDash(content.prefix),
            textOrDash(content.range),
            numberOrDash(content.number),
            numberOrDash(content.bit),
            content.dataType,
            textOrDash(content.registerAddress)};
}

QStringList verdictHeader()
{
    return {QStringLiteral("verdict"), QStringLiteral("address"), QStringLiteral("station"),
            QStringLiteral("symbol"),  QStringLiteral("range"),   QStringLiteral("number"),
            QStringLiteral("bit"),     QStringLiteral("kind"),    QStringLiteral("register")};
}

/// The description without the example, which has its own column.
QString meaning(const QString &description)
{
    const int example = description.lastIndexOf(QLatin1String(", e.g. "));
    return example < 0 ? description : description.left(example);
}

QString limits(const label::CommandFormatter &row)
{
    return row.start() + QLatin1String(" to ") + row.end();
}

} // namespace

Worker::Worker(const Request &request, const Streams &streams)
    : m_request(request)
    , m_streams(streams)
{
}

ExitCode Worker::run() const
{
    const DriverDatabase database(m_request.database);
    if (m_request.command == Request::Command::Drivers)
        return listDrivers(database);
    QString error;
    std::unique_ptr<label::LabelLoader> label = database.read(m_request.driver, error);
    if (!label) {
        m_streams.complain(error);
        return Unreadable;
    }
    Device device(std::move(label));
    switch (m_request.command) {
    case Request::Command::Formats:
        return listFormats(device);
    case Request::Command::Check:
        return checkAddresses(device);
    case Request::Command::Next:
        return printNext(device);
    case Request::Command::Split:
        return printUnits(device);
    case Request::Command::Blocks:
        return printBlocks(device);
    default:
        return Success;
    }
}

ExitCode Worker::listDrivers(const DriverDatabase &database) const
{
    QString error;
    const QList<DriverDatabase::Driver> drivers = database.drivers(error);
    if (!error.isEmpty()) {
        m_streams.complain(error);
        return Unreadable;
    }
    TextTable table;
    table.addRow({QStringLiteral("driver"), QStringLiteral("formats"), QStringLiteral("largest read"),
                  QStringLiteral("largest read of bits")});
    for (const DriverDatabase::Driver &driver : drivers) {
        if (m_request.json)
            m_streams.print(JsonLine()
                                .add("driver", driver.name)
                                .add("formats", driver.formats)
                                .add("blockSize", driver.blockSize)
                                .add("bitBlockSize", driver.bitBlockSize)
                                .text());
        else
            table.addRow({driver.name, QString::number(driver.formats), QString::number(driver.blockSize),
                          QString::number(driver.bitBlockSize)});
    }
    printTable(table);
    return Success;
}

ExitCode Worker::listFormats(Device &device) const
{
    TextTable table;
    table.addRow({QStringLiteral("symbol"), QStringLiteral("example"), QStringLiteral("range"), QStringLiteral("radix"),
                  QStringLiteral("kind"), QStringLiteral("family"), QStringLiteral("format")});
    for (int index = 0; index < device.table().countFormatters(); ++index) {
        const label::CommandFormatter &row = device.row(index);
        const QString example = label::exampleAddress(row, device.label().familyTemplates());
        const bool isFamily = row.isFamilyTemplate();
        if (m_request.json)
            m_streams.print(JsonLine()
                                .add("typeIndex", index)
                                .add("format", row.formatString())
                                .add("prefix", row.prefixSymbol())
                                .add("example", example)
                                .add("first", row.start())
                                .add("last", row.end())
                                .add("radix", row.base())
                                .add("dataType", label::dataTypeWord(row.type()))
                                .add("family", isFamily)
                                .text());
        else
            table.addRow({textOrDash(row.prefixSymbol()), textOrDash(example), limits(row), QString::number(row.base()),
                          label::dataTypeWord(row.type()), isFamily ? QStringLiteral("family") : QStringLiteral("-"),
                          meaning(row.formatString())});
    }
    printTable(table);
    return Success;
}

ExitCode Worker::checkAddresses(Device &device) const
{
    QList<QStringList> rows;
    bool anyAccepted = false;
    ExitCode code = Success;
    forEachAddress([&](const QString &text) {
        const ResolvedAddress address = device.resolve(text, m_request.type);
        if (!address.isAccepted()) {
            code = AddressRefused;
            if (m_request.json)
                m_streams.print(refusedAsJson(address));
            else
                rows.append({QStringLiteral("refused"), text, address.advice()});
            return;
        }
        anyAccepted = true;
        const Content content(device, address);
        if (m_request.json)
            m_streams.print(acceptedAsJson(address, content));
        else
            rows.append(acceptedCells(address, content));
    });
    TextTable table;
    if (anyAccepted)
        table.addRow(verdictHeader());
    for (const QStringList &row : qAsConst(rows))
        table.addRow(row);
    printTable(table);
    return code;
}

void Worker::forEachAddress(const std::function<void(const QString &)> &visit) const
{
    for (const QString &address : m_request.addresses) {
        if (address != QLatin1String("-")) {
            visit(address);
            continue;
        }
        while (true) {
            QByteArray line = m_streams.in.readLine();
            if (line.isEmpty())
                break;
            while (line.endsWith('\n') || line.endsWith('\r'))
                line.chop(1);
            if (!line.trimmed().isEmpty())
                visit(QString::fromUtf8(line));
        }
    }
}

void Worker::printTable(const TextTable &table) const
{
    if (!m_request.json)
        m_streams.print(table);
}

ExitCode Worker::refuse(const QString &address, const QString &reason) const
{
    const bool namesAddress = reason.startsWith(address + QLatin1Char(' '));
    m_streams.complain(namesAddress ? reason : address + QLatin1String(": ") + reason);
    return AddressRefused;
}
