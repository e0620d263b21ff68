// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/scripthook.h"

#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/address_grammar/mutexlocker_p.h"

#include <QCoreApplication>
#include <QDebug>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QScriptEngine>
#include <QScriptEngineAgent>
#include <QScriptValue>
#include <QStringList>
#include <QTextStream>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <optional>
#include <vector>

namespace label {

namespace {

std::atomic<int> s_enginesMade = 0;
std::atomic<int> s_enginesAlive = 0;

QScriptValue print(QScriptContext *context, QScriptEngine *engine)
{
    QStringList texts;
    for (int i = 0; i < context->argumentCount(); ++i)
        texts.append(context->argument(i).toString());
    qDebug() << "Script debug:" << texts.join(QLatin1Char(' '));
    return engine->undefinedValue();
}

std::optional<int> toNumber(const QScriptValue &value)
{
    return value.toInt32();
}

std::optional<QString> toText(const QScriptValue &value)
{
    return value.toString();
}

std::optional<QStringList> toTexts(const QScriptValue &value)
{
    // A script may set any array length, and the conversion cannot be stopped.
    constexpr quint32 longestRun = 10000000;
    if (value.property(QStringLiteral("length")).toUInt32() > longestRun)
        return std::nullopt;
    return qscriptvalue_cast<QStringList>(value);
}

/// Qt warns of types registered twice, which happens when two threads make the first engines at the same time.
void makeFirstEngineAlone()
{
    static std::once_flag isMade;
    std::call_once(isMade, [] { const QScriptEngine engine; });
}

/// True for two values that are the same to a script.
bool isSame(const QScriptValue &one, const QScriptValue &other)
{
    const bool areNoNumbers = one.isNumber() && other.isNumber() && qIsNaN(one.toNumber()) && qIsNaN(other.toNumber());
    return areNoNumbers || one.strictlyEquals(other);
}

/// The lines where a script throws values. An engine with an agent records only the line of an error object.
///
/// An agent is notified of statements, throws and catches. A `finally` block catches and throws again without a
/// statement; so does an engine function that a throw leaves.
class ThrowTrace
{
public:
    void start(const QString &text)
    {
        m_text = text;
        m_running.clear();
        m_caught.clear();
        m_line = 0;
        m_isInFlight = false;
    }

    /// The line of the `throw` of the last value thrown, from 1.
    int line() const { return m_line; }

    void noteEntry() { m_running.push_back({0, false}); }
    void noteExit()
    {
        if (!m_running.empty())
            m_running.pop_back();
    }

    void noteStatement(int line)
    {
        statement() = {line, true};
        m_isInFlight = false;
    }

    void noteThrow(const QScriptValue &value)
    {
        if (m_isInFlight)
            return;
        m_isInFlight = true;
        const bool isStatement = statement().isFresh && holdsThrow(statement().line);
        statement().isFresh = false;
        const auto caught = std::find_if(m_caught.rbegin(), m_caught.rend(),
                                         [&value](const Caught &one) { return isSame(one.value, value); });
        m_line = caught == m_caught.rend() || isStatement ? statement().line : caught->line;
    }

    void noteCatch(const QScriptValue &value)
    {
        // A loop may catch any number of values, and blocks are nested only a few deep.
        constexpr std::size_t mostCaught = 64;
        if (m_caught.size() == mostCaught)
            m_caught.erase(m_caught.begin());
        m_caught.push_back({value, m_line});
        statement().isFresh = false;
        m_isInFlight = false;
    }

private:
    struct Statement
    {
        int line;
        bool isFresh; ///< nothing thrown or caught since its start
    };

    struct Caught
    {
        QScriptValue value;
        int line;
    };

    /// The last statement of the innermost running function.
    Statement &statement()
    {
        if (m_running.empty())
            noteEntry();
        return m_running.back();
    }

    bool holdsThrow(int line) const
    {
        static const QRegularExpression lineEnd(QStringLiteral("\r\n|[\n\r\u2028\u2029]"));
        static const QRegularExpression word(QStringLiteral("\\bthrow\\b"));
        return m_text.split(lineEnd).value(line - 1).contains(word);
    }

    QString m_text;
    std::vector<Statement> m_running;
    std::vector<Caught> m_caught;
    int m_line = 0;
    bool m_isInFlight = false;
};

/// Stops a script that runs too long, and traces what it throws. It sees only statements: a loop without one is not
/// stopped.
class Deadline : public QScriptEngineAgent
{
public:
    explicit Deadline(QScriptEngine *engine)
        : QScriptEngineAgent(engine)
    {
    }

    void start(const QString &text = QString())
    {
        m_statements = 0;
        m_hasExpired = false;
        m_trace.start(text);
        m_running.start();
    }

    /// True when the last run was stopped.
    bool hasExpired() const { return m_hasExpired; }

    int throwLine() const { return m_trace.line(); }

    void functionEntry(qint64) override { m_trace.noteEntry(); }
    void functionExit(qint64, const QScriptValue &) override { m_trace.noteExit(); }
    void exceptionThrow(qint64, const QScriptValue &value, bool) override { m_trace.noteThrow(value); }
    void exceptionCatch(qint64, const QScriptValue &value) override { m_trace.noteCatch(value); }

    void positionChange(qint64, int line, int) override
    {
        m_trace.noteStatement(line);
        // Reading the clock costs more than the statements.
        constexpr int statementsBetweenLooks = 4096;
        if (++m_statements % statementsBetweenLooks != 0 ||
            !m_running.hasExpired(qint64(ScriptHook::deadlineSeconds) * 1000))
            return;
        m_hasExpired = true;
        engine()->abortEvaluation();
    }

private:
    QElapsedTimer m_running;
    ThrowTrace m_trace;
    int m_statements = 0;
    bool m_hasExpired = false;
};

} // namespace

class ScriptHook::Engine
{
public:
    Engine()
        : m_deadline(new Deadline(&m_engine))
    {
        ++s_enginesMade;
        ++s_enginesAlive;
        m_engine.setAgent(m_deadline);
    }
    ~Engine() { --s_enginesAlive; }
    Q_DISABLE_COPY(Engine)

    /// False, after a line in the debug log, when the text throws or is stopped.
    bool evaluate(const QString &text)
    {
        m_engine.globalObject().setProperty(QStringLiteral("print"), m_engine.newFunction(print));
        m_deadline->start(text);
        m_engine.evaluate(text);
        if (m_deadline->hasExpired()) {
            qDebug() << "script stopped after" << ScriptHook::deadlineSeconds << "seconds";
            return false;
        }
        if (!m_engine.hasUncaughtException())
            return true;
        const int line = m_engine.uncaughtExceptionLineNumber();
        qDebug() << "uncaught exception at line" << (line > 0 ? line : m_deadline->throwLine()) << ":"
                 << m_engine.uncaughtException().toString();
        return false;
    }

    /// The function's result through `convert`, which returns an optional value. Nothing when there is no such
    /// function, or when it or the conversion, which may run script code too, was stopped.
    template<typename Convert>
    auto call(const char *function, const QScriptValueList &arguments, Convert convert)
        -> decltype(convert(QScriptValue()))
    {
        const MutexLocker<std::mutex> locker(&m_lock);
        m_deadline->start();
        const QScriptValue result = global(function).call(QScriptValue(), arguments);
        if (!result.isValid() || m_deadline->hasExpired())
            return std::nullopt;
        auto converted = convert(result);
        if (m_deadline->hasExpired())
            converted.reset();
        return converted;
    }

    QScriptValue global(const char *name) const { return m_engine.globalObject().property(QLatin1String(name)); }
    void setGlobal(const char *name, const QScriptValue &value)
    {
        m_engine.globalObject().setProperty(QLatin1String(name), value);
    }

private:
    QScriptEngine m_engine;
    Deadline *m_deadline; // owned by the engine
    std::mutex m_lock;    // an engine runs one call at a time
};

ScriptHook::ScriptHook() = default;

ScriptHook::ScriptHook(const QString &ruleText)
{
    const QString folder = QStringLiteral("scripts");
    QDir scripts(QCoreApplication::applicationDirPath());
    if (!scripts.cd(folder)) {
        scripts.mkdir(folder);
        scripts.cd(folder);
    }
    const QString fileName = ruleText.mid(2);
    path = fileName.isEmpty() ? QStringLiteral("not exist") : scripts.absoluteFilePath(fileName);
}

ScriptHook::ScriptHook(const ScriptHook &other)
{
    *this = other;
}

ScriptHook &ScriptHook::operator=(const ScriptHook &other)
{
    loaded = other.loaded;
    directory = other.directory;
    path = other.path;
    reset();
    m_engine.reset();
    if (loaded)
        load();
    return *this;
}

ScriptHook::ScriptHook(ScriptHook &&) noexcept = default;
ScriptHook &ScriptHook::operator=(ScriptHook &&) noexcept = default;
ScriptHook::~ScriptHook() = default;

bool ScriptHook::exists() const
{
    return QFileInfo::exists(path);
}

bool ScriptHook::load()
{
    loaded = false;
    if (!exists())
        return false;
    const QString text = fileText();
    loaded = !text.isEmpty();
    if (loaded) {
        if (!m_engine) {
            makeFirstEngineAlone();
            m_engine = std::make_unique<Engine>();
        }
        announceDefaults();
        if (!m_engine->evaluate(text))
            return false;
    }
    const auto anything = [](const QScriptValue &) { return std::optional(true); };
    loaded = m_engine && m_engine->call("init", {}, anything);
    if (loaded)
        readAnnounced();
    else
        qDebug() << "script init function call fail" << path;
    return loaded;
}

void ScriptHook::reset()
{
    bitBase = 10;
    needOptimize = false;
    needAligment = false;
    aligmentSize = 1;
    canConvertToRegister = false;
    addressStartPos = 0;
}

QString ScriptHook::fileText() const
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QTextStream(&file).readAll() : QString();
}

void ScriptHook::announceDefaults()
{
    m_engine->setGlobal("bitBase", bitBase);
    m_engine->setGlobal("needOptimize", needOptimize);
    m_engine->setGlobal("needAligment", needAligment);
    m_engine->setGlobal("aligmentSize", aligmentSize);
    m_engine->setGlobal("canConvertToRegister", canConvertToRegister);
    m_engine->setGlobal("addressStartPos", addressStartPos);
}

void ScriptHook::readAnnounced()
{
    bitBase = m_engine->global("bitBase").toInt32();
    needOptimize = m_engine->global("needOptimize").toBool();
    needAligment = m_engine->global("needAligment").toBool();
    aligmentSize = m_engine->global("aligmentSize").toInt32();
    canConvertToRegister = m_engine->global("canConvertToRegister").toBool();
    addressStartPos = m_engine->global("addressStartPos").toInt32();
}

int ScriptHook::getAddressRange(const QString &address) const
{
    if (!loaded)
        return -1;
    const std::optional<int> number = m_engine->call("getAddressRange", {address}, toNumber);
    if (!number)
        qDebug() << "script getAddressRange function call fail" << address;
    return number.value_or(-1);
}

int ScriptHook::bitoffset(const QString &address) const
{
    if (!loaded)
        return -1;
    const std::optional<int> bit = m_engine->call("bitoffset", {address}, toNumber);
    if (!bit)
        qDebug() << "script bitoffset function call fail" << address;
    return bit.value_or(-1);
}

QString ScriptHook::convertToRegisterAddress(const QString &address) const
{
    if (!loaded)
        return QString();
    const std::optional<QString> converted = m_engine->call("convertToRegisterAddress", {address}, toText);
    if (!converted)
        qDebug() << "script convertToRegisterAddress function call fail" << address;
    return converted.value_or(QString());
}

QList<CommunicatorCommand> ScriptHook::makeBitContinueCommand(const CommunicatorCommand &command, int count,
                                                              int step) const
{
    QList<CommunicatorCommand> commands;
    if (!loaded)
        return commands;
    const auto addresses = m_engine->call("makeBitContinueCommand", {command.address, count, step}, toTexts);
    if (!addresses) {
        qDebug() << "script makeBitContinueCommand function call fail" << command.stringKey() << count << step;
        return commands;
    }
    for (const QString &address : *addresses) {
        commands.append(command);
        commands.last().address = address;
    }
    return commands;
}

int ScriptHook::enginesMade()
{
    return s_enginesMade;
}

int ScriptHook::enginesAlive()
{
    return s_enginesAlive;
}

} // namespace label
