// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_SYSTEMTAGITEMINFORMATION_H
#define ZELMAR_LABEL_SYSTEMTAGITEMINFORMATION_H

#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/zelmar_label_export.h"

#include <QObject>
#include <QString>

/// One built-in tag of a panel: its clock, screen, memory, user and hardware values. It is a `QObject`, but copied by
/// value; a copy has no parent.
class ZELMAR_LABEL_EXPORT SystemTagItemInformation : public QObject
{
    Q_OBJECT

public:
    enum TagType : int {
        InformationTag = 0, ///< shows a value
        ControlTag = 1,     ///< a write controls the panel
        InvalidTag = 2,     ///< no tag
    };

    /// Id -1, name "s>invalid", an invalid data type.
    explicit SystemTagItemInformation(QObject *parent = nullptr);

    SystemTagItemInformation(int tagId, const QString &tagName, TagType type, CommunicatorCommand::DataType valueType,
                             QObject *parent = nullptr);

    SystemTagItemInformation(const SystemTagItemInformation &other);
    SystemTagItemInformation &operator=(const SystemTagItemInformation &other);
    ~SystemTagItemInformation() override;

    /// Copies the four members.
    void copy(const SystemTagItemInformation &other);

    int id = -1;
    QString name;
    /// 3 for a number, 7 for a text, 8 for the Unix time stamp.
    CommunicatorCommand::DataType dataType = CommunicatorCommand::Invalid;
    TagType tagType = InvalidTag;
};

#endif
