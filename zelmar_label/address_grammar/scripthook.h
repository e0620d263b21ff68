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

/// The ECMAScript file that a rule text may name, which parses addresses that the rule language cannot and announces
/// the constants that the rules would otherwise give. docs/driver-authors-guide.md tells script authors the contract.
///
/// The file is looked for in the folder "scripts" beside the application; its name is the rule text from the third
/// character on. A script engine costs about 0.2 ms and 370 KiB, so it comes into being only when a script is loaded.
///
/// All failures go to the debug log and give the stated failure value. A script that runs longer than `deadlineSeconds`
/// in one go is stopped at its next statement and counts as failed, so that an endless loop does not hang the editor. A
/// loop whose braces hold no statement, such as `while (true) {}`, has no next statement and is not stopped.
///
/// Not safe for use by two threads at once; serialised with the formatter that holds it.
class ScriptHook
{
public:
    static constexpr int deadlineSeconds = 10;

    /// No script: nothing loaded, an empty path.
    ScriptHook();

    /// Works out `path`, and creates the folder "scripts" beside the application if it is missing. Does not load.
    explicit ScriptHook(const QString &ruleText);

    /// Takes `loaded`, `directory` and `path`, puts the announced fields back to their defaults and, if the source is
    /// loaded, loads the file anew: engines are not copied.
    ScriptHook(const ScriptHook &other);
    ScriptHook &operator=(const ScriptHook &other);

    /// Takes over `other` with its engine.
    ScriptHook(ScriptHook &&other) noexcept;
    ScriptHook &operator=(ScriptHook &&other) noexcept;

    ~ScriptHook();

    /// True when the file exists now; the file system is asked at each call.
    bool exists() const;

    /// Reads and evaluates the file, calls its `init` and reads the announced values. The result is whether all went
    /// well. `loaded` is also left true by a script that throws while it is evaluated: what it defined before works.
    bool load();

    /// Puts the six announced fields back to their defaults.
    void reset();

    /// The script's number of a device address; -1 on failure or when not loaded.
    int getAddressRange(const QString &address) const;

    /// The script's bit offset of a device address; -1 on failure or when not loaded.
    int bitoffset(const QString &address) const;

    /// The script's register address for a command's address, which may carry a station; empty on failure or when not
    /// loaded.
    QString convertToRegisterAddress(const QString &address) const;

    /// Copies of `command`, all fields kept, with the addresses that the script gives for `count` and `step` (bit
    /// positions), as many as it gives; empty on failure or when not loaded.
    QList<CommunicatorCommand> makeBitContinueCommand(const CommunicatorCommand &command, int count, int step) const;

    /// Engines made since the process began and engines alive now; for tests and benchmarks.
    static int enginesMade();
    static int enginesAlive();

    /// The file has been read and, as a rule, initialised; for reading, like all fields.
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
    /// Announced by the script: what aligned numbers are multiples of.
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
