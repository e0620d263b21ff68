// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/badinput.h"

#include "support/labelfixtures.h"

#include <QTest>

void askEverything(const label::CommandFormatter &row, const QString &address)
{
    QVERIFY(row.matchedLength(address) <= address.size());
    QCOMPARE(row.hadStationID(address), address.contains(QLatin1Char('-')));
    QVERIFY(!row.removeStationID(address).contains(QLatin1Char('-')));
    QVERIFY(row.getRangeString(address).size() <= address.size());
    QVERIFY(row.getEditorUsedRangeString(address).size() <= address.size());
    row.isAddressValid(address);
    row.isAddressDataTypeMatch(address, CommunicatorCommand::Bit);
    row.isDeviceAddressValid(address);
    row.canBeCompleted(address);
    row.getAddresRangePart(address);
    row.getbitOffset(address);
    row.convertedRegisterCommandSymbol();
    row.convertedRagisterCommandRange(address);
    row.stringWithDigits(address);
    // An expression takes milliseconds for a long text.
    const bool isLong = address.size() > 1000;
    const QList<int> types = isLong ? QList<int>{3} : QList<int>{0, 3, highest};
    for (const int type : types) {
        for (const quint64 length : {quint64(1), std::numeric_limits<quint64>::max()}) {
            const CommunicatorCommand asked = command(address, type, length);
            row.autoCompleteCommand(asked);
            row.convertToRegisterAddress(asked);
            QVERIFY(row.makeContinueCommand(asked, 3).size() <= 3);
            QVERIFY(row.makeContinueCommand(asked, -1).size() <= 1);
            QVERIFY(row.makeContinueCommandwithCap(asked, 3, highest, true).size() <= 3);
            QVERIFY(row.makeContinueCommandwithCap(asked, 3, lowest, false).size() <= 3);
            QVERIFY(row.makeBitContinueCommand(asked, 3, highest, false).size() <= 3);
            QVERIFY(row.makeBitContinueCommand(asked, lowest, 1, true).isEmpty());
        }
    }
}

const QStringList &plainAddresses()
{
    static const QStringList texts = {QString(), QStringLiteral("D100"), QStringLiteral("3-D100.5"),
                                      QStringLiteral("%1D"), QStringLiteral("-")};
    return texts;
}
