// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintcontext.h"

#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/address_grammar/scripthook.h"

#include <QElapsedTimer>
#include <QFile>
#include <QScriptEngine>

#include <map>
#include <memory>

using label::ScriptHook;

namespace {

struct ScriptFault
{
    const char *id;
    QString what;
    QString advice;
};

QStringList scriptFunctions()
{
    return {QStringLiteral("init"), QStringLiteral("getAddressRange"), QStringLiteral("bitoffset"),
            QStringLiteral("convertToRegisterAddress"), QStringLiteral("makeBitContinueCommand")};
}

QScriptValue printNothing(QScriptContext *, QScriptEngine *engine)
{
    return engine->undefinedValue();
}

/// Reads the script a second time, since the library reports only that it failed.
class ScriptProbe
{
public:
    explicit ScriptProbe(const QString &path)
    {
        QFile file(path);
        // An unreadable file counts as empty, as in the library.
        const QString text = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        m_engine.globalObject().setProperty(QStringLiteral("print"), m_engine.newFunction(printNothing));
        m_engine.evaluate(text);
        if (m_engine.hasUncaughtException())
            m_exception = QStringLiteral("line %1: %2")
                              .arg(m_engine.uncaughtExceptionLineNumber())
                              .arg(m_engine.uncaughtException().toString());
    }

    /// "line 3: ..."; empty without one.
    const QString &exception() const { return m_exception; }

    QStringList missingFunctions() const
    {
        QStringList missing;
        const QStringList wanted = scriptFunctions();
        for (const QString &name : wanted) {
            if (!m_engine.globalObject().property(name).isFunction())
                missing.append(name);
        }
        return missing;
    }

    /// The exception of this function call; empty if there is none.
    QString thrown(const QString &name, const QScriptValueList &arguments)
    {
        m_engine.globalObject().property(name).call(QScriptValue(), arguments);
        if (!m_engine.hasUncaughtException())
            return QString();
        QString text = QStringLiteral("line %1: %2")
                           .arg(m_engine.uncaughtExceptionLineNumber())
                           .arg(m_engine.uncaughtException().toString());
        m_engine.clearExceptions();
        return text;
    }

    /// Like the library's call for an address of a row.
    QString thrownFor(const QString &name, const QString &address)
    {
        if (name == QLatin1String("init"))
            return thrown(name, {});
        if (name == QLatin1String("makeBitContinueCommand"))
            return thrown(name, {QScriptValue(address), QScriptValue(2), QScriptValue(1)});
        return thrown(name, {QScriptValue(address)});
    }

private:
    QScriptEngine m_engine;
    QString m_exception;
};

QList<ScriptFault> loadFaults(ScriptHook &hook, ScriptProbe &probe, const QString &name)
{
    const QString advice = QStringLiteral("correct the script");
    if (!probe.exception().isEmpty())
        return {{"script-fails", QStringLiteral("the script '%1' fails in %2").arg(name, probe.exception()), advice}};
    QList<ScriptFault> faults;
    const QStringList missing = probe.missingFunctions();
    for (const QString &function : missing)
        faults.append({"script-function", QStringLiteral("the script '%1' has no function %2").arg(name, function),
                       QStringLiteral("add it: each script has %1").arg(scriptFunctions().join(QLatin1String(", ")))});
    if (!faults.isEmpty())
        return faults;
    const QString thrown = probe.thrownFor(QStringLiteral("init"), QString());
    if (!thrown.isEmpty())
        return {{"script-fails", QStringLiteral("init of the script '%1' fails in %2").arg(name, thrown), advice}};
    if (hook.needAligment && hook.aligmentSize == 0)
        return {{"script-alignment", QStringLiteral("the script '%1' requires alignment to multiples of 0").arg(name),
                 QStringLiteral("set aligmentSize in init, or needAligment to false")}};
    return {};
}

/// The results for one script file.
struct ExaminedScript
{
    explicit ExaminedScript(const QString &ruleText)
        : name(ruleText.mid(2))
        , hook(ruleText)
    {
        QElapsedTimer timer;
        timer.start();
        const bool isGood = hook.load();
        // The library stops an endless script, but the probe has no time limit.
        if (timer.elapsed() >= ScriptHook::deadlineSeconds * qint64(1000)) {
            faults.append(endless());
            return;
        }
        probe = std::make_unique<ScriptProbe>(hook.path);
        faults = loadFaults(hook, *probe, name);
        if (faults.isEmpty() && !isGood)
            faults.append({"script-fails", QStringLiteral("the script '%1' cannot be run").arg(name),
                           QStringLiteral("correct the script: it is empty, or cannot be read")});
    }

    /// Calls the function through the library, which has a time limit.
    bool isEndless(const QString &function, const QString &address) const
    {
        CommunicatorCommand command;
        command.address = address;
        QElapsedTimer timer;
        timer.start();
        if (function == QLatin1String("getAddressRange"))
            hook.getAddressRange(address);
        else if (function == QLatin1String("bitoffset"))
            hook.bitoffset(address);
        else if (function == QLatin1String("convertToRegisterAddress"))
            hook.convertToRegisterAddress(address);
        else if (function == QLatin1String("makeBitContinueCommand"))
            hook.makeBitContinueCommand(command, 2, 1);
        return timer.elapsed() >= ScriptHook::deadlineSeconds * qint64(1000);
    }

    ScriptFault endless() const
    {
        return {"script-fails", QStringLiteral("the script '%1' does not end").arg(name),
                QStringLiteral("correct the script: it is stopped after %1 seconds").arg(ScriptHook::deadlineSeconds)};
    }

    QString name;
    ScriptHook hook;
    std::unique_ptr<ScriptProbe> probe;
    QList<ScriptFault> faults;
};

void lintRow(const LintContext &context, LintRow &row, ExaminedScript &script)
{
    const auto tell = [&context, &row](const ScriptFault &fault) {
        context.report.rowError(row.index, fault.id, "multiple_rule", fault.what, fault.advice);
    };
    for (const ScriptFault &fault : qAsConst(script.faults))
        tell(fault);
    if (script.faults.isEmpty() && row.isEndless)
        tell(script.endless());
    if (!script.faults.isEmpty() || row.matches.isEmpty())
        return;
    // The script may decide what the row accepts.
    const QString address = row.addresses.isEmpty() ? row.matches.first() : row.addresses.first();
    const QStringList functions = scriptFunctions();
    for (const QString &function : functions) {
        row.isEndless = script.isEndless(function, address);
        if (row.isEndless) {
            tell(script.endless());
            return;
        }
        const QString thrown = script.probe->thrownFor(function, address);
        if (!thrown.isEmpty())
            tell(
                {"script-fails",
                 QStringLiteral("%1 of the script '%2' fails for %3 in %4").arg(function, script.name, address, thrown),
                 QStringLiteral("correct the script")});
    }
}

} // namespace

void lintScripts(LintContext &context)
{
    std::map<QString, ExaminedScript> scripts;
    for (LintRow &row : context.rows) {
        if (row.isScripted)
            lintRow(context, row,
                    scripts.try_emplace(row.formatter.ruleText(), row.formatter.ruleText()).first->second);
    }
}
