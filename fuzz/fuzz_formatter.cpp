// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/commandinformationtalbe.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstddef>
#include <cstdint>

namespace {

void silence(QtMsgType, const QMessageLogContext &, const QString &) {}

QCoreApplication &application()
{
    static int argumentCount = 1;
    static char name[] = "fuzz_formatter";
    static char *arguments[] = {name, nullptr};
    static QCoreApplication instance(argumentCount, arguments);
    return instance;
}

void judge(const label::CommandInformationTalbe &table, const QString &address)
{
    for (const int type : {-1, 0, 2})
        table.getAllPartialMatchedAddressIndex(address, type);
    const int index = table.getFirstMatchedAddressIndex(address, label::anyType);
    table.addressRange(index, address);
    table.bitOffset(index, address);
}

void makeCommands(const label::CommandInformationTalbe &table, const QString &address, int dataType, int count)
{
    CommunicatorCommand command;
    command.address = address;
    command.dataType = static_cast<CommunicatorCommand::DataType>(dataType);
    table.normalizeCommand(0, command);
    table.makeContinueCommand(0, command, count);
    table.makeContinueCommandwithCap(0, command, count, 3, false);
    table.makeBlockCommand(-1, 0, table.addressRange(0, address), count);
    table.makeBlockCommandWithoutSizeLimit(1, 0, table.addressRange(0, address), count);
    int typeIndex = -1;
    QString converted;
    table.convertBitCommandToRegisterCommand(command, typeIndex, converted);
}

} // namespace

/// The input has these lines: pattern, rule, start, end, numbers (type, group, data size, base, block size, command
/// type, count), and then addresses.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    application();
    qInstallMessageHandler(silence);
    const QStringList lines =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size)).split(QLatin1Char('\n'));
    const QStringList numbers = lines.value(4).split(QLatin1Char(' '));
    const auto number = [&numbers](int position) { return numbers.value(position).toInt(); };
    label::CommandInformationTalbe table;
    table.addCommandFormatter(label::CommandFormatter(lines.value(0), number(0), number(1), QStringLiteral("fuzzed"),
                                                      QStringLiteral("D"), lines.value(2), lines.value(3),
                                                      static_cast<unsigned long long>(number(2)), lines.value(1),
                                                      QString(), number(3), number(4), QStringLiteral("N")));
    for (const QString &address : lines.mid(5)) {
        judge(table, address);
        makeCommands(table, address, number(5), number(6) % 200);
    }
    return 0;
}
