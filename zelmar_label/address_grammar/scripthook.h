// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_SCRIPTHOOK_H
#define ZELMAR_LABEL_SCRIPTHOOK_H

#include <QDir>
#include <QList>
#include <QString>

#include <memory>

class CommunicatorCommand;

namespace label {

/// The ECMAScript file that a rule text may name. It parses addresses that the rule language cannot, and announces
/// constants in place of the rules. docs/driver-authors-guide.md describes the contract for script authors.
///
/// The file is in the folder "scripts" beside the application; its name is the rule text from the third character on. A
/// script engine costs about 0.2 ms and 370 KiB, so it is made only when a script is loaded.
///
/// All failures go to the debug log and return the stated failure value. A script that runs longer than
/// `deadlineSeconds` at a time is stopped at its next statement and fails, so an endless loop does not hang the editor.
/// A loop with no statement in its braces, such as `while (true) {}`, is not stopped.
///
/// Any number of threads may call the const operations: they wait for each other, since an engine runs one call at a
/// time.
class ScriptHook
{
public:
    static constexpr int deadlineSeconds = 10;

    /// No script: nothing loaded, an empty path.
    ScriptHook();

    /// Sets `path`, and creates the folder "scripts" beside the application if it is missing. Does not load.
    explicit ScriptHook(const QString &ruleText);

    /// Copies `loaded`, `directory` and `path` and resets the announced fields. Loads the file again if `other` is
    /// loaded: engines are not copied.
    ScriptHook(const ScriptHook &other);
    ScriptHook &operator=(const ScriptHook &other);

    /// Takes `other` with its engine.
    ScriptHook(ScriptHook &&other) noexcept;
    ScriptHook &operator=(ScriptHook &&other) noexcept;

    ~ScriptHook();

    /// True when the file exists; each call reads the file system.
    bool exists() const;

    /// Reads and evaluates the file, calls its `init` and reads the announced values. Returns true on success. `loaded`
    /// is true also for a script that throws during evaluation: what it defined before works.
    bool load();

    /// Resets the six announced fields to their defaults.
    void reset();

    /// The script's number of a device address; -1 on failure or when not loaded.
    int getAddressRange(const QString &address) const;

    /// The script's bit offset of a device address; -1 on failure or when not loaded.
    int bitoffset(const QString &address) const;

    /// The script's register address for a command's address, which may carry a station; empty on failure or when not
    /// loaded.
    QString convertToRegisterAddress(const QString &address) const;

    /// Copies of `command` with all fields, one for each address that the script returns for `count` and `step` (bit
    /// positions); empty on failure or when not loaded.
    QList<CommunicatorCommand> makeBitContinueCommand(const CommunicatorCommand &command, int count, int step) const;

    /// Engines made since process start, and engines alive; for tests and benchmarks.
    static int enginesMade();
    static int enginesAlive();

    /// The file was read and normally initialised; for reading, like all fields.
    bool loaded = false;
    /// Copied along; nothing reads it.
    QDir directory;
    /// Absolute path of the file; "not exist" when the rule text names none.
    QString path;

    /// Announced by the script: radix of the bit part.
    int bitBase = 10;
    /// Announced by the script: commands may be optimised.
    bool needOptimize = false;
    /// Announced by the script: numbers must be aligned, and count bits.
    bool needAligment = false;
    /// Announced by the script: aligned numbers are multiples of it.
    int aligmentSize = 1;
    /// Announced by the script: bits can be reached through a register.
    bool canConvertToRegister = false;
    /// Announced by the script: origin of the alignment.
    int addressStartPos = 0;

private:
    class Engine;

    QString fileText() const;
    void announceDefaults();
    void readAnnounced();

    std::unique_ptr<Engine> m_engine;
};

} // namespace label

#endif
