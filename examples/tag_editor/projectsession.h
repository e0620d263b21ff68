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

/// The project that is being edited. One at a time in a program, since the library's widgets ask for the stations of
/// the application's current project, and since closing it drops all that the library knows of projects. Everything
/// that is written to the project's tags goes through here.
///
/// Operations that can fail give the reason, for a person; an empty text means that all went well.
class ProjectSession : public QObject
{
    Q_OBJECT

public:
    explicit ProjectSession(QObject *parent = nullptr);
    ~ProjectSession() override;

    /// Opens the project and, once that has worked, closes the one before it.
    QString open(const QString &path);

    /// Makes the sample project, where no file is, and opens it.
    QString openSample(const QString &path);

    /// Where the sample project of this user is kept.
    static QString samplePath();

    bool isOpen() const { return m_tags != nullptr; }
    bool isWritable() const { return m_isWritable; }
    const QString &path() const { return m_path; }

    /// Only while a project is open.
    TagSystem &tags() const { return *m_tags; }
    AddressJudge &judge() const { return *m_judge; }
    /// The label of a link, for the address pickers. It lives as long as the session.
    label::LabelInterface *pickerLabel(label::LabelInterface *label);
    QSqlDatabase database() const;
    PlainTag tag(int id) const;
    /// `tag` is the one of the id.
    AddressVerdict verdict(int id, const PlainTag &tag) const;

    QString rename(int id, const QString &name);
    QString change(int id, const QString &address, int dataType, int scale);
    QString add(const QString &name, int linkId, int dataType, const QString &address, int scale);

    /// Why no tag can be written; empty when tags can.
    QString refusalToWrite() const;
    /// Why a tag cannot be called so; empty when it can.
    QString nameProblem(const QString &name) const;

    /// For many writes in a row; other writes have to wait meanwhile. A roll-back takes them back.
    QString begin();
    QString commit();
    void rollBack();

Q_SIGNALS:
    /// Another project is open.
    void opened();
    /// Tags were added, or taken back.
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
