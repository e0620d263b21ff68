// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include <zelmar_label/label_store/labelstore.h>
#include <zelmar_label/label_table/labelinterface.h>

#include <QCoreApplication>
#include <QTextStream>

/// Tests one address like a program outside the project; exit code 0 when all is as expected.
int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QString error;
    label::LabelInterface *device = label::createLabel(QStringLiteral("ISO on TCP"), error);
    if (!device) {
        QTextStream(stderr) << error << '\n';
        return 1;
    }
    const int row = device->addressValidation(QStringLiteral("DB1.DBW4"), label::anyType);
    QTextStream(stdout) << device->getPrefixSymbolByTypeID(row) << '\n';
    return device->addressRange(row, QStringLiteral("DB1.DBW4")) == 4 ? 0 : 2;
}
