// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PROJECTFILES_TAGLIMITS_H
#define ZELMAR_LABEL_PROJECTFILES_TAGLIMITS_H

#include <QJsonValue>
#include <QString>

class QVariant;
class TagSystem;

/// The least and the greatest value of a tag; for a text, its length.
struct TagLimits
{
    TagLimits(TagSystem &tags, int id);

    int type;
    bool isNumber = false;
    int length = 0;
    QString max;
    QString min;
    QJsonValue jsonMax;
    QJsonValue jsonMin;
};

/// Why the tag cannot store `value`, which was given as `text`; empty if it can.
QString beyondLimits(TagSystem &tags, int id, const QVariant &value, const QString &text);

#endif
