// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "taglimits.h"

#include "tagtypes.h"
#include "tagvalue.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QCoreApplication>

TagLimits::TagLimits(TagSystem &tags, int id)
    : type(tags.getDataTypeByID(id))
{
    if (type == tagtype::Ascii) {
        length = tags.getScaleByID(id);
        return;
    }
    QVariant greatest;
    QVariant least;
    tags.getMaxMinValue(id, greatest, least);
    isNumber = greatest.isValid();
    // The limits of a bit are numbers, in texts and in JSON.
    const int shownType = type == tagtype::Bit ? int(tagtype::Int32) : type;
    max = textOfValue(greatest, shownType);
    min = textOfValue(least, shownType);
    jsonMax = jsonOfValue(greatest, shownType);
    jsonMin = jsonOfValue(least, shownType);
}

QString beyondLimits(TagSystem &tags, int id, const QVariant &value, const QString &text)
{
    const TagLimits limits(tags, id);
    if (limits.type == tagtype::Ascii) {
        const int size = value.toByteArray().size();
        if (size <= limits.length)
            return QString();
        return QCoreApplication::translate("TagLimits", "the text has %1 bytes, the tag %2")
            .arg(size)
            .arg(limits.length);
    }
    // Every readable 64-bit value is within the limits.
    if (tagtype::isWide(limits.type) || tags.isInTheRange(id, value))
        return QString();
    return QCoreApplication::translate("TagLimits", "%1 is not between %2 and %3").arg(text, limits.min, limits.max);
}
