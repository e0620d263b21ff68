// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_TAGTHREADSTEST_H
#define ZELMAR_LABEL_TESTS_TAGTHREADSTEST_H

#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>

#include <array>
#include <memory>

/// A project for many threads.
namespace threads {

constexpr int tagCount = 1200;
constexpr int recipeCount = 100;

/// Its connection, and its drivers; the last has a custom label.
extern const QString key;
extern const QString words;
extern const QString blocks;
extern const QString scripted;
extern const QString own;

/// The tags of the project: each is known by its id alone.
struct Tag
{
    explicit Tag(int number)
        : id(number)
    {
    }

    int id;

    int link() const { return id % 4; }
    /// Internal tags and links of plain words have all types in turn; others have 16-bit numbers.
    int type() const { return link() < 2 ? id / 4 % 12 : 3; }
    int scale() const { return id % 50 + 1; }
    int access() const { return id % 2; }
    QString name() const { return QStringLiteral("Tag_%1").arg(id); }
    QString symbol() const { return link() == 2 ? QStringLiteral("DB") : QStringLiteral("D"); }
    QString address() const
    {
        if (link() == 0)
            return QString();
        return link() == 2 ? QStringLiteral("DB%1.DBW%2").arg(id % 40 + 1).arg(id) : QStringLiteral("D%1").arg(id);
    }
    int commandType() const
    {
        static const std::array<int, 12> types{0, 1, 1, 2, 2, 3, 3, 3, 5, 4, 4, 4};
        return types.at(static_cast<std::size_t>(type()));
    }
    int size() const
    {
        static const std::array<int, 12> sizes{1, 1, 1, 2, 2, 4, 4, 4, 1, 8, 8, 8};
        return sizes.at(static_cast<std::size_t>(type()));
    }

    TagRow row() const
    {
        TagRow made;
        made.id = id;
        made.name = name();
        made.connectorId = link();
        made.dataType = type();
        made.address = address();
        made.scale = scale();
        made.access = access();
        made.scanTime = id % 3;
        made.addition = id % 7;
        made.defaultValue = id % 9;
        return made;
    }
};

/// The value 100 of the tag, and its bytes.
QVariant hundred(const Tag &tag);
QByteArray hundredImage(const Tag &tag);

/// Lines that show faults: all except those of built rows and of ids found by an address.
QStringList troubleIn(const LogRecorder &log);

/// A process that only reads a finished project, from any thread. The functions of a program share the project, and
/// build its labels again. A message of the library fails the function.
class TagThreadsTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

} // namespace threads

#endif
