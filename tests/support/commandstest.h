// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_COMMANDSTEST_H
#define ZELMAR_LABEL_TESTS_COMMANDSTEST_H

#include "support/projecttest.h"

#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/// The drivers of the project that `CommandsTest` makes.
extern const QString registers;
extern const QString blocks;
extern const QString dataBlocks;

/// Their links, one with a missing driver, and one that does not exist.
constexpr int registersLink = 2;
constexpr int blocksLink = 3;
constexpr int dataBlocksLink = 4;
constexpr int brokenLink = 5;
constexpr int missingLink = 77;

/// Lines that the library logs.
extern const QString noPrefixLabel;
extern const QString noRunLabel;
extern const QString noCapLabel;
extern const QString failed;

extern const QString nullCommand;

TagRow tag(int id, int link, int type, const QString &address);

/// All seven fields.
QString described(const CommunicatorCommand &command);
QStringList described(const QList<CommunicatorCommand> &commands);

QStringList criticalLines(const QStringList &lines);

/// Tests the command, run and blocks of a tag in an editor. The functions of a program share one project; each rolls
/// back what it writes. A message that the library shows fails the function.
class CommandsTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

protected:
    TagSystem *m_tags = nullptr;

private:
    void makeSharedProject();

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

#endif
