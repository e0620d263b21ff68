// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_PROJECTSESSION_H
#define TAG_EDITOR_PROJECTSESSION_H

#include "addressjudge.h"
#include "tagcsv.h"

#include <QObject>
#include <QSqlDatabase>
#include <QString>

#include <memory>
#include <unordered_map>

class PickerLabel;
class StoredText;
class TagSystem;

/// The open project. Only one in a program, since the library's widgets read the stations of the application's current
/// project, and closing it drops all the library's data of projects. All writes to the project's tags use this class.
///
/// Operations that can fail return the reason, for a person; an empty text means success.
class ProjectSession : public QObject
{
    Q_OBJECT

public:
    explicit ProjectSession(QObject *parent = nullptr);
    ~ProjectSession() override;

    /// Opens the project and, on success, closes the previous one.
    QString open(const QString &path);

    /// A warning of tags whose ids belong to system and recipe tags; empty when there are none.
    QString reservedIdWarning() const;

    /// Makes the sample project if the file does not exist, and opens it.
    QString openSample(const QString &path);

    /// The path of this user's sample project.
    static QString samplePath();

    bool isOpen() const { return m_tags != nullptr; }
    bool isWritable() const { return m_isWritable; }
    const QString &path() const { return m_path; }

    /// Only while a project is open.
    TagSystem &tags() const { return *m_tags; }
    AddressJudge &judge() const { return *m_judge; }
    /// The label of a link, for the address pickers. It is valid during the lifetime of the session.
    label::LabelInterface *pickerLabel(label::LabelInterface *label);
    QSqlDatabase database() const;
    PlainTag tag(int id) const;
    /// `tag` is the tag with the id.
    AddressVerdict verdict(int id, const PlainTag &tag) const;

    QString rename(int id, const QString &name);
    QString change(int id, const QString &address, int dataType, int scale);
    QString add(const QString &name, int linkId, int dataType, const QString &address, int scale);

    /// Why no tag can be written; empty if tags can.
    QString refusalToWrite() const;
    /// Why a tag cannot have this name; empty if it can.
    QString nameProblem(const QString &name) const;

    /// For many writes in a row; other writes must wait. A roll-back undoes them.
    QString begin();
    QString commit();
    void rollBack();

Q_SIGNALS:
    /// Another project was opened.
    void opened();
    /// Tags were added, or rolled back.
    void tagsAdded();
    void tagChanged(int id);

private:
    QString connect(const QString &path, const QString &key) const;
    QString refusalToWrite(int id) const;
    void take(const QString &path, const QString &key, bool isWritable);
    void close();

    TagSystem *m_tags = nullptr;
    std::unique_ptr<AddressJudge> m_judge;
    std::unique_ptr<StoredText> m_stored;
    std::unordered_map<label::LabelInterface *, std::unique_ptr<PickerLabel>> m_pickerLabels;
    QString m_path;
    bool m_isWritable = false;
    bool m_isInTransaction = false;
};

#endif
