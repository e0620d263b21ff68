// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_SCRIPTHOOKTEST_H
#define ZELMAR_LABEL_TESTS_SCRIPTHOOKTEST_H

#include "zelmar_label/address_grammar/scripthook.h"

#include <QObject>
#include <QString>

/// The usual script of the functions, and the rule that names it.
extern const QString s_fileName;
extern const QString s_rule;

/// `announced` of a hook whose script announces nothing.
extern const QString s_defaults;

QString scriptPath(const QString &fileName = s_fileName);

/// The line of the log about a function that failed.
QString failure(const QString &function, const QString &path = scriptPath());

/// All values that a script may set.
QString announced(const label::ScriptHook &hook);

/// A test program for script hooks; each function starts without the scripts' folder.
class ScriptHookTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanupTestCase();
};

#endif
