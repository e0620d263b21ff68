// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/scripthooktest.h"

#include "support/labelfixtures.h"

#include <QDir>
#include <QFile>

using label::ScriptHook;

const QString s_fileName = QStringLiteral("script.js");
const QString s_rule = QStringLiteral("F>script.js");
const QString s_defaults = QStringLiteral("10 0 0 1 0 0");

QString scriptPath(const QString &fileName)
{
    return scriptsFolder() + QLatin1Char('/') + fileName;
}

QString failure(const QString &function, const QString &path)
{
    return QStringLiteral("script %1 function call fail \"%2\"").arg(function, path);
}

QString announced(const ScriptHook &hook)
{
    return QStringLiteral("%1 %2 %3 %4 %5 %6")
        .arg(hook.bitBase)
        .arg(hook.needOptimize)
        .arg(hook.needAligment)
        .arg(hook.aligmentSize)
        .arg(hook.canConvertToRegister)
        .arg(hook.addressStartPos);
}

void ScriptHookTest::init()
{
    QFile::remove(scriptsFolder());
    QDir(scriptsFolder()).removeRecursively();
}

void ScriptHookTest::cleanupTestCase()
{
    init();
}
