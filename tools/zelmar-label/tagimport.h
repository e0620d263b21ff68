// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_TAGIMPORT_H
#define ZELMAR_LABEL_TOOL_TAGIMPORT_H

#include "commandline.h"
#include "csvfile.h"
#include "output.h"
#include "storedtext.h"

#include <QHash>
#include <QStringList>

class Project;

/// Adds the tags of a CSV file to a project and changes those that it has, all of them or none.
class TagImport
{
public:
    TagImport(const Request &request, const Streams &streams);

    ExitCode run();

    /// The names of the columns, as exported.
    static QStringList columns();

private:
    /// One tag as the file or the project has it.
    struct Tag
    {
        int line = 0;
        QString name;
        int link = 0;
        int dataType = 0;
        QString address;
        int scale = 1;
        /// How many have the name.
        int count = 1;

        bool isSame(const Tag &other) const
        {
            return link == other.link && dataType == other.dataType && address == other.address && scale == other.scale;
        }
    };

    bool readFile();
    bool readHeader(const CsvRow &header);
    bool readKnownTags(const Project &project);
    void readRows(Project &project);
    QString readRow(const Project &project, const CsvRow &row, Tag &tag) const;
    QString refusal(Project &project, const Tag &tag) const;
    QString nameRefusal(const Project &project, const QString &name) const;
    QString field(const CsvRow &row, int column) const;
    bool write(Project &project);
    void refuse(int line, const QString &name, const QString &reason);
    void showProgress(int done, int all) const;
    void printSummary() const;

    const Request &m_request;
    const Streams &m_streams;
    StoredText m_stored;
    CsvContent m_content;
    /// Where in a row each of `columns()` stands; -1 for none.
    QList<int> m_positions;
    int m_width = 0;
    QHash<QString, Tag> m_known;
    QHash<QString, int> m_lines;
    QList<Tag> m_added;
    QList<Tag> m_changed;
    int m_unchanged = 0;
    int m_refused = 0;
};

#endif
