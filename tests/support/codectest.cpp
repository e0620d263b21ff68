// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/codectest.h"

#include <QMap>
#include <QTest>

QString hexOf(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' '));
}

QByteArray fromHex(const QString &hex)
{
    return QByteArray::fromHex(hex.toLatin1());
}

void CodecTest::initTestCase()
{
    QList<TagRow> rows;
    for (int type = 0; type <= 11; ++type) {
        if (type != 8)
            rows.append(tag(numbers + type, type, 3));
    }
    for (int length : {0, 1, 4, 6})
        rows.append(tag(texts + length, 8, length));
    rows.append(tag(textOfNegativeLength, 8, -1));
    rows.append(tag(112, 12));
    rows.append(tag(113, -1));
    rows.append(tag(114, 1000));
    rows.append(tag(20011, 3));
    rows.append(tag(21001, 3));
    rows.append(tag(29999, 3));
    rows.append(tag(30000, 3));
    rows.append(tag(60001, 3));
    const LogRecorder log;
    bindTo(rows);
    const QMap<int, QString> names{{30001, QStringLiteral("R>1_1")}};
    const QMap<int, QString> rowNames{{50001, QStringLiteral("R>1_1I1")}};
    m_tags->setRecipeTags(names, {{30001, 103},
                                  {30002, 204},
                                  {30003, -1},
                                  {30004, 20010},
                                  {30005, 30001},
                                  {30006, 50001},
                                  {30007, 9999},
                                  {30008, 30003},
                                  {30009, 109},
                                  {50000, 111}});
    m_tags->setRecipeRowTags(rowNames, {{50001, 106}, {50002, 204}, {50003, -1}, {60000, 107}});
}

void CodecTest::unknownTypes()
{
    QTest::addColumn<int>("id");
    QTest::newRow("just above the types") << 112;
    QTest::newRow("negative") << 113;
    QTest::newRow("far above the types") << 114;
}
