// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include <zelmar_label/label_store/labelstore.h>
#include <zelmar_label/label_table/labelinterface.h>

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false")); // each format read writes a line
    QTextStream out(stdout);
    QString error;
    label::LabelInterface *device = label::createLabel(QStringLiteral("FX5U Ethernet"), error);
    if (!device) {
        out << error << '\n';
        return 1;
    }
    CommunicatorCommand command;
    command.address = QStringLiteral("X17");
    command.dataType = CommunicatorCommand::Bit;
    const int row = device->addressValidation(command.address, label::BitType);
    out << device->getFormatString(row) << '\n';
    for (const CommunicatorCommand &next : device->makeContinueCommand(row, command, 3))
        out << next.address << '\n'; // X17, X20, X21: the relays of this PLC are numbered in octal
}
