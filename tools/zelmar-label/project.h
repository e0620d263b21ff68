// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_PROJECT_H
#define ZELMAR_LABEL_TOOL_PROJECT_H

#include "addressjudge.h"
#include "device.h"
#include "output.h"

#include <QHash>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

#include <memory>

class TagSystem;

/// A link of a project, and its driver beside the program.
struct Link
{
    bool exists = false;
    bool isEnabled = false;
    QString driver;
    QList<int> stations;
    /// Null if there is no such driver.
    std::shared_ptr<Device> device;
};

/// An open project database. The library's message boxes go to the error stream. Only one object at a time.
class Project
{
public:
    enum class Access {
        ReadOnly,
        ReadWrite, ///< the file must exist; its tag table is made if it is missing
    };

    explicit Project(const Streams &streams);
    ~Project();
    Q_DISABLE_COPY(Project)

    /// False, with a message, if it is not a project or cannot be opened. Write access opens a transaction, which is
    /// rolled back unless it is committed.
    bool open(const QString &path, Access access);

    /// Treats a project without a tag table that cannot get one as a project without tags.
    void takeMissingTable() { m_takesMissingTable = true; }

    bool commit();

    bool hasTable() const { return m_hasTable; }

    TagSystem &tags() const { return *m_tags; }
    QSqlDatabase database() const;
    const QString &path() const { return m_path; }

    /// True once the library has reported an error.
    bool hasFailed() const { return m_hasFailed; }

    /// Sets recipe tags of the project, given as "NAME=TAG". False after an error message.
    bool setRecipes(const QStringList &recipes);

    /// The id of the tag with this name or id; -1 after an error message.
    int find(const QString &text) const;

    const Link &link(int id);

    /// Why the link's device has no item of the type at the address; empty if it has.
    QString refusal(int linkId, int dataType, const QString &address, int scale);
    QString refusal(int tagId);

private:
    std::shared_ptr<Device> deviceOf(int linkId, const QString &driver);
    bool readTable();
    bool begin();
    bool isReadable() const;

    const Streams &m_streams;
    QString m_path;
    TagSystem *m_tags = nullptr;
    std::unique_ptr<AddressJudge> m_judge;
    QHash<int, std::shared_ptr<Link>> m_links;
    /// Links of one driver share its label.
    QHash<QString, std::shared_ptr<Device>> m_devices;
    bool m_hasTable = false;
    bool m_takesMissingTable = false;
    bool m_isQuiet = false;
    bool m_isInTransaction = false;
    bool m_hasFailed = false;
};

#endif
