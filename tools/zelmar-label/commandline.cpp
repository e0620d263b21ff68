// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "commandline.h"

#include "zelmar_label/label_table/labeltype.h"

#include <QCommandLineParser>

#include <array>

namespace {

constexpr int mostItems = 1000000;

struct CommandText
{
    Request::Command command;
    const char *name;
    const char *usage;
    const char *summary;
    const char *description;
};

constexpr std::array<CommandText, 6> commandTexts = {{
    {Request::Command::Drivers, "drivers", "drivers [options]", "list the drivers",
     "Lists the drivers of the database with the number of their address formats and the most that one read may "
     "hold."},
    {Request::Command::Formats, "formats", "formats [options] DRIVER", "list the address formats of a driver",
     "Lists the address formats of a driver in the order in which they are tried. A \"family\" is a format of many "
     "prefixes, such as data blocks: the prefix comes with the address."},
    {Request::Command::Check, "check", "check [options] DRIVER ADDRESS...",
     "say whether addresses are valid, and why not",
     "Says of each address whether the device has it, and what stands in it or why it is refused. \"-\" reads "
     "addresses "
     "from standard input, one a line. An address may carry a station: 2-D100."},
    {Request::Command::Next, "next", "next [options] --as TYPE DRIVER ADDRESS", "print the addresses that follow one",
     "Prints the addresses that follow ADDRESS, for items of a type. Wide items go on by more than one register."},
    {Request::Command::Split, "split", "split [options] --as TYPE DRIVER ADDRESS",
     "cut a wide item or a text into the device's units",
     "Prints the addresses of the units that together hold the item at ADDRESS."},
    {Request::Command::Blocks, "blocks", "blocks [options] --count N DRIVER ADDRESS",
     "cut a run of items into reads of the size that the device allows",
     "Prints the block commands that read N items from ADDRESS on: N units of the format, or N bits, which are read "
     "by the registers that hold them where the format allows it."},
}};

const CommandText *findCommand(const QString &name)
{
    for (const CommandText &text : commandTexts) {
        if (name == QLatin1String(text.name))
            return &text;
    }
    return nullptr;
}

const CommandText &textOf(Request::Command command)
{
    return commandTexts.at(static_cast<std::size_t>(command));
}

QCommandLineOption flag(const QStringList &names, const char *description)
{
    return QCommandLineOption(names, QLatin1String(description));
}

QCommandLineOption valued(const char *name, const char *description, const char *value)
{
    return QCommandLineOption(QLatin1String(name), QLatin1String(description), QLatin1String(value));
}

QList<QCommandLineOption> commonOptions()
{
    return {flag({QStringLiteral("json")}, "Print one JSON object a line."),
            flag({QStringLiteral("debug")}, "Print the library's log on standard error."),
            valued("database", "Driver database to read. Default: database/drivers beside the program.", "FILE"),
            flag({QStringLiteral("h"), QStringLiteral("help")}, "Print this help."),
            flag({QStringLiteral("v"), QStringLiteral("version")}, "Print the version.")};
}

QList<QCommandLineOption> optionsOf(Request::Command command)
{
    switch (command) {
    case Request::Command::Drivers:
    case Request::Command::Formats:
        return {};
    case Request::Command::Check:
        return {valued("type", "Accept any address, bits only or registers only: any, bit, register. Default: any.",
                       "TYPE")};
    case Request::Command::Next:
        return {valued("as", "Type of the items: bit, byte, word, dword, qword, text.", "TYPE"),
                valued("count", "How many addresses, 1 to 1000000. Default: 1.", "N"),
                valued("cap", "Distance of the addresses in units, negative for downwards, instead of the natural one.",
                       "N"),
                flag({QStringLiteral("unchecked")}, "With --cap: leave limits and alignment out of account.")};
    case Request::Command::Split:
        return {valued("as", "Type of the item: byte, word, dword, qword, text.", "TYPE"),
                valued("length", "How many items of the type, or characters, 1 to 1000000. Default: 1.", "N")};
    case Request::Command::Blocks:
        return {valued("count", "How many items, 1 to 1000000.", "N")};
    }
    return {};
}

QString usageLine(const char *usage)
{
    return QLatin1String("Usage: zelmar-label ") + QLatin1String(usage) + QLatin1Char('\n');
}

QString generalHelp()
{
    QString text = usageLine("COMMAND [options] ...") +
                   QStringLiteral("Asks the driver database how devices spell their addresses.\n\nCommands:\n");
    for (const CommandText &command : commandTexts)
        text += QLatin1String("  ") + QString::fromLatin1(command.name).leftJustified(9) +
                QLatin1String(command.summary) + QLatin1Char('\n');
    return text +
           QStringLiteral("\n\"zelmar-label COMMAND --help\" tells the options of a command.\n"
                          "Exit codes: 0 done, 1 an address was refused, 2 wrong usage, 3 the database or the driver "
                          "cannot be read.\n");
}

/// Qt's help text begins with the program's path as it was called.
QString commandHelp(const CommandText &command, const QCommandLineParser &parser)
{
    const QString text = parser.helpText();
    return usageLine(command.usage) + text.mid(text.indexOf(QLatin1Char('\n')) + 1);
}

std::optional<int> dataTypeOf(const QString &word)
{
    static const QStringList words = {QStringLiteral("bit"),   QStringLiteral("byte"),  QStringLiteral("word"),
                                      QStringLiteral("dword"), QStringLiteral("qword"), QStringLiteral("text")};
    const int type = words.indexOf(word);
    return type < 0 ? std::nullopt : std::optional<int>(type);
}

std::optional<int> filterOf(const QString &word)
{
    if (word == QLatin1String("any"))
        return label::anyType;
    if (word == QLatin1String("bit"))
        return label::BitType;
    // Any type but 0 stands for all registers.
    return word == QLatin1String("register") ? std::optional<int>(label::WordType) : std::nullopt;
}

/// Reads the arguments of one command; the first thing that is wrong with them ends up in `error`.
class RequestReader
{
public:
    explicit RequestReader(const CommandText &command)
        : m_text(command)
    {
        m_request.command = command.command;
        m_parser.setApplicationDescription(QLatin1String(command.description));
        m_parser.addOptions(optionsOf(command.command));
        m_parser.addOptions(commonOptions());
    }

    CommandLine read(const QStringList &arguments)
    {
        CommandLine result;
        const bool understood = m_parser.parse(arguments);
        if (m_parser.isSet(QStringLiteral("help"))) {
            result.text = commandHelp(m_text, m_parser);
            return result;
        }
        if (!understood)
            m_error = m_parser.errorText().section(QLatin1Char('.'), 0, 0);
        readArguments();
        readOptions();
        if (m_error.isEmpty())
            result.request = m_request;
        else
            result.error = m_error;
        return result;
    }

private:
    void fail(const QString &sentence)
    {
        if (m_error.isEmpty())
            m_error = sentence;
    }

    void readArguments()
    {
        const QStringList positional = m_parser.positionalArguments().mid(1);
        const bool takesDriver = m_request.command != Request::Command::Drivers;
        const bool takesAddress = takesDriver && m_request.command != Request::Command::Formats;
        const bool takesMany = m_request.command == Request::Command::Check;
        const int most = (takesDriver ? 1 : 0) + (takesAddress ? 1 : 0);
        if (takesDriver && positional.isEmpty())
            fail(QStringLiteral("the driver is missing"));
        else if (takesAddress && positional.size() < 2)
            fail(QStringLiteral("the address is missing"));
        else if (!takesMany && positional.size() > most)
            fail(QStringLiteral("\"%1\" is one argument too many").arg(positional.at(most)));
        m_request.driver = positional.value(0);
        m_request.addresses = positional.mid(1);
    }

    void readOptions()
    {
        m_request.json = m_parser.isSet(QStringLiteral("json"));
        m_request.debug = m_parser.isSet(QStringLiteral("debug"));
        m_request.database = m_parser.value(QStringLiteral("database"));
        switch (m_request.command) {
        case Request::Command::Drivers:
        case Request::Command::Formats:
            return;
        case Request::Command::Check:
            readFilter();
            return;
        case Request::Command::Next:
            readDataType(true);
            readCount("count", m_request.count);
            readCap();
            return;
        case Request::Command::Split:
            readDataType(false);
            readCount("length", m_request.length);
            return;
        case Request::Command::Blocks:
            if (!m_parser.isSet(QStringLiteral("count")))
                fail(QStringLiteral("--count is missing: how many items to read"));
            readCount("count", m_request.count);
            return;
        }
    }

    void readFilter()
    {
        if (!m_parser.isSet(QStringLiteral("type")))
            return;
        const QString word = m_parser.value(QStringLiteral("type"));
        const std::optional<int> filter = filterOf(word);
        if (!filter)
            fail(QStringLiteral("--type \"%1\" is not one of any, bit, register").arg(word));
        m_request.type = filter.value_or(label::anyType);
    }

    void readDataType(bool takesBits)
    {
        const QLatin1String known(takesBits ? "bit, byte, word, dword, qword, text" : "byte, word, dword, qword, text");
        if (!m_parser.isSet(QStringLiteral("as"))) {
            fail(QStringLiteral("--as is missing: one of %1").arg(known));
            return;
        }
        const QString word = m_parser.value(QStringLiteral("as"));
        const std::optional<int> type = dataTypeOf(word);
        if (!type || (*type == label::BitType && !takesBits))
            fail(QStringLiteral("--as \"%1\" is not one of %2").arg(word, known));
        m_request.dataType = type.value_or(label::BitType);
    }

    std::optional<int> wholeNumber(const char *option)
    {
        const QString text = m_parser.value(QLatin1String(option));
        bool isNumber = false;
        const int number = text.toInt(&isNumber);
        if (isNumber)
            return number;
        fail(QStringLiteral("--%1 \"%2\" is no whole number, or too large a one").arg(QLatin1String(option), text));
        return std::nullopt;
    }

    void readCount(const char *option, int &count)
    {
        if (!m_parser.isSet(QLatin1String(option)))
            return;
        const std::optional<int> number = wholeNumber(option);
        if (!number)
            return;
        if (*number < 1 || *number > mostItems)
            fail(QStringLiteral("--%1 %2 is not between 1 and %3")
                     .arg(QLatin1String(option), QString::number(*number), QString::number(mostItems)));
        count = *number;
    }

    void readCap()
    {
        m_request.unchecked = m_parser.isSet(QStringLiteral("unchecked"));
        if (m_parser.isSet(QStringLiteral("cap"))) {
            m_request.cap = wholeNumber("cap");
            if (m_request.cap == 0)
                fail(QStringLiteral("--cap 0 would repeat one address"));
        } else if (m_request.unchecked) {
            fail(QStringLiteral("--unchecked needs --cap"));
        }
    }

    const CommandText &m_text;
    QCommandLineParser m_parser;
    Request m_request;
    QString m_error;
};

/// The command is the first argument that is no option; options may stand before it.
QString commandName(const QStringList &arguments, QCommandLineParser &parser)
{
    QStringList known;
    for (const CommandText &command : commandTexts) {
        for (const QCommandLineOption &option : optionsOf(command.command)) {
            if (!known.contains(option.names().constFirst()))
                parser.addOption(option);
            known.append(option.names());
        }
    }
    parser.addOptions(commonOptions());
    parser.parse(arguments);
    return parser.positionalArguments().value(0);
}

} // namespace

CommandLine parseCommandLine(const QStringList &arguments)
{
    CommandLine result;
    QCommandLineParser parser;
    const QString name = commandName(arguments, parser);
    const CommandText *const command = findCommand(name);
    if (parser.isSet(QStringLiteral("version"))) {
        result.text = QStringLiteral("zelmar-label " ZELMAR_LABEL_VERSION "\n");
        return result;
    }
    if (name.isEmpty() && parser.isSet(QStringLiteral("help"))) {
        result.text = generalHelp();
        return result;
    }
    if (!command) {
        result.error = (name.isEmpty() ? QStringLiteral("the command is missing")
                                       : QStringLiteral("there is no command \"%1\"").arg(name)) +
                       QLatin1Char('\n') + generalHelp();
        return result;
    }
    result = RequestReader(*command).read(arguments);
    if (!result.error.isEmpty())
        result.error += QLatin1Char('\n') + usageLine(textOf(command->command).usage) +
                        QStringLiteral("\"zelmar-label %1 --help\" tells more.\n").arg(name);
    return result;
}
