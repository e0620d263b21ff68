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

/// A project's connection to a device, and what the driver beside the program knows of it.
struct Link
{
    bool exists = false;
    bool isEnabled = false;
    QString driver;
    QList<int> stations;
    /// Null when there is no such driver.
    std::shared_ptr<Device> device;
};

/// A project database, open. What the library would show in a message box goes to the error stream. One at a time.
class Project
{
public:
    enum class Access {
        ReadOnly,
        ReadWrite, ///< the file has to be there; its tag table is made if it is missing
    };

    explicit Project(const Streams &streams);
    ~Project();
    Q_DISABLE_COPY(Project)

    /// False, after a complaint, when it is no project or cannot be opened. With write access a transaction is open
    /// from then on, which is rolled back unless it is committed.
    bool open(const QString &path, Access access);

    /// Takes a project that has no tag table yet, and cannot be given one, for one without tags.
    void takeMissingTable() { m_takesMissingTable = true; }

    bool commit();

    bool hasTable() const { return m_hasTable; }

    TagSystem &tags() const { return *m_tags; }
    QSqlDatabase database() const;
    const QString &path() const { return m_path; }

    /// True once the library has had something to complain of.
    bool hasFailed() const { return m_hasFailed; }

    /// Hands recipe tags over to the project, as "NAME=TAG". False after a complaint.
    bool setRecipes(const QStringList &recipes);

    /// The id of the tag that the text names, or whose id it is; -1 after a complaint.
    int find(const QString &text) const;

    const Link &link(int id);

    /// Why the link's device has no item of the type at the address; empty when it has.
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
