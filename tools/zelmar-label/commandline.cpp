// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "commandline.h"

#include "zelmar_label/label_table/labeltype.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QHash>

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

constexpr std::array<CommandText, 16> commandTexts = {{
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
     "by the registers that hold them where the format allows it. With the file of a project in place of a driver, "
     "those of a tag: \"blocks [options] --count N PROJECT TAG\"."},
    {Request::Command::Tags, "tags", "tags [options] PROJECT", "list a project's tags",
     "Lists the tags of a project with their link and driver, whether the device has the address, or why not, and "
     "their command."},
    {Request::Command::Commands, "commands", "commands [options] PROJECT TAG", "print the commands from a tag on",
     "Prints the commands of N items from the tag's address on. A tag is given by its name or by its id."},
    {Request::Command::ProjectBlocks, "blocks", "blocks [options] --count N PROJECT TAG",
     "cut the items from a tag on into reads of the size that the device allows",
     "Prints the block commands that read N items of the tag's type from its address on. A tag is given by its name "
     "or by its id."},
    {Request::Command::Encode, "encode", "encode [options] PROJECT TAG VALUE", "print a tag's value as bytes",
     "Prints the bytes of VALUE, in hexadecimal, the least significant one first. The value has to lie within the "
     "limits of the tag's type. Behind \"--\" it may begin with a minus sign."},
    {Request::Command::Decode, "decode", "decode [options] PROJECT TAG HEXBYTES", "print a tag's value from bytes",
     "Prints the value that the bytes stand for. They are given in hexadecimal, the least significant one first, with "
     "or without blanks between them."},
    {Request::Command::Limits, "limits", "limits [options] PROJECT [TAG...]", "print the limits of tags",
     "Prints the least and the greatest value of each tag, or of all tags."},
    {Request::Command::SystemTags, "system-tags", "system-tags [options]", "list the tags that every panel has",
     "Lists the tags that are built into every panel, and so into every project."},
    {Request::Command::Export, "export", "export [options] PROJECT", "print a project's tags as CSV",
     "Prints the tags as CSV that \"import\" reads: name, link, data type, address, scale."},
    {Request::Command::Import, "import", "import [options] PROJECT FILE.csv", "add and change tags from CSV",
     "Adds the tags of the file to the project and changes those that it has already, all or none: when a line is "
     "refused, nothing is written. The first line names the columns: name, link, data type, address and, if there is "
     "one, scale. \"-\" reads standard input."},
    {Request::Command::SampleProject, "sample-project", "sample-project [options] FILE", "make a project to try",
     "Makes a project of four links and two hundred tags. A file that is there already stays as it is."},
}};

const CommandText &textOf(Request::Command command)
{
    return commandTexts.at(static_cast<std::size_t>(command));
}

/// `blocks` is asked of a project when its first argument, `subject`, is a file.
const CommandText *findCommand(const QString &name, const QString &subject)
{
    for (const CommandText &text : commandTexts) {
        if (name != QLatin1String(text.name))
            continue;
        return text.command == Request::Command::Blocks && QFileInfo(subject).isFile()
                   ? &textOf(Request::Command::ProjectBlocks)
                   : &text;
    }
    return nullptr;
}

QCommandLineOption flag(const QStringList &names, const char *description)
{
    return QCommandLineOption(names, QLatin1String(description));
}

QCommandLineOption valued(const char *name, const char *description, const char *value)
{
    return QCommandLineOption(QLatin1String(name), QLatin1String(description), QLatin1String(value));
}

bool isOfProject(Request::Command command)
{
    Request request;
    request.command = command;
    return request.isOfProject();
}

QList<QCommandLineOption> commonOptions()
{
    return {flag({QStringLiteral("json")}, "Print one JSON object a line."),
            flag({QStringLiteral("debug")}, "Print the library's log on standard error."),
            flag({QStringLiteral("h"), QStringLiteral("help")}, "Print this help."),
            flag({QStringLiteral("v"), QStringLiteral("version")}, "Print the version.")};
}

/// A project's drivers are those beside the program, whatever else there is.
QList<QCommandLineOption> databaseOptions(Request::Command command)
{
    if (isOfProject(command))
        return {};
    return {valued("database", "Driver database to read. Default: database/drivers beside the program.", "FILE")};
}

QCommandLineOption recipeOption()
{
    return valued("recipe",
                  "Recipe tag to hand over to the project, connected to one of its tags: \"R>1_1=Level\". May "
                  "be given more than once.",
                  "NAME=TAG");
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
    case Request::Command::ProjectBlocks:
        return {valued("count", "How many items, 1 to 1000000.", "N"), recipeOption()};
    case Request::Command::Tags:
        return {
            valued("link", "Only the tags of this link; 0 for internal tags.", "N"),
            valued("find", "Only tags whose name holds the characters of TEXT in their order, in any case.", "TEXT"),
            recipeOption()};
    case Request::Command::Commands:
        return {valued("count", "How many items, 1 to 1000000. Default: 1.", "N"), recipeOption()};
    case Request::Command::Encode:
    case Request::Command::Decode:
    case Request::Command::Limits:
        return {recipeOption()};
    case Request::Command::Import:
        return {flag({QStringLiteral("dry-run")}, "Say what would be done, and do nothing.")};
    case Request::Command::SystemTags:
    case Request::Command::Export:
    case Request::Command::SampleProject:
        return {};
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
                   QStringLiteral("Asks the driver database how devices spell their addresses, and a project what its "
                                  "tags are.\n\nCommands:\n");
    for (const CommandText &command : commandTexts) {
        if (command.command != Request::Command::ProjectBlocks)
            text += QLatin1String("  ") + QString::fromLatin1(command.name).leftJustified(16) +
                    QLatin1String(command.summary) + QLatin1Char('\n');
    }
    return text + QStringLiteral(
                      "\n\"zelmar-label COMMAND --help\" tells the options of a command.\n"
                      "Exit codes: 0 done, 1 an address, a value or a line was refused, 2 wrong usage, 3 the database, "
                      "the driver or the project cannot be read or written.\n");
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
        m_parser.addOptions(databaseOptions(command.command));
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
        if (m_request.isOfProject())
            readProjectArguments(positional);
        else
            readDriverArguments(positional);
    }

    /// Those that the usage names in capitals; a bracket and points set off any number.
    void readProjectArguments(const QStringList &positional)
    {
        static const QHash<QString, QString> words = {
            {QStringLiteral("PROJECT"), QStringLiteral("the project")},
            {QStringLiteral("TAG"), QStringLiteral("the tag")},
            {QStringLiteral("VALUE"), QStringLiteral("the value")},
            {QStringLiteral("HEXBYTES"), QStringLiteral("the row of bytes")},
            {QStringLiteral("FILE"), QStringLiteral("the file to make")},
            {QStringLiteral("FILE.csv"), QStringLiteral("the file to read")},
        };
        const bool takesMany =
            m_request.command == Request::Command::Limits || m_request.command == Request::Command::Decode;
        QStringList expected;
        const QStringList usage = QString::fromLatin1(m_text.usage).split(QLatin1Char(' '));
        for (const QString &word : usage) {
            if (words.contains(word))
                expected.append(words.value(word));
        }
        if (positional.size() < expected.size())
            fail(QStringLiteral("%1 is missing").arg(expected.at(positional.size())));
        else if (!takesMany && positional.size() > expected.size())
            fail(QStringLiteral("\"%1\" is one argument too many").arg(positional.at(expected.size())));
        m_request.project = positional.value(0);
        m_request.arguments = positional.mid(1);
    }

    void readDriverArguments(const QStringList &positional)
    {
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
        if (!m_request.isOfProject())
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
            readNeededCount();
            return;
        case Request::Command::ProjectBlocks:
            readNeededCount();
            readRecipes();
            return;
        case Request::Command::Tags:
            readSelection();
            readRecipes();
            return;
        case Request::Command::Commands:
            readCount("count", m_request.count);
            readRecipes();
            return;
        case Request::Command::Encode:
        case Request::Command::Decode:
        case Request::Command::Limits:
            readRecipes();
            return;
        case Request::Command::Import:
            m_request.dryRun = m_parser.isSet(QStringLiteral("dry-run"));
            return;
        case Request::Command::SystemTags:
        case Request::Command::Export:
        case Request::Command::SampleProject:
            return;
        }
    }

    void readNeededCount()
    {
        if (!m_parser.isSet(QStringLiteral("count")))
            fail(QStringLiteral("--count is missing: how many items to read"));
        readCount("count", m_request.count);
    }

    void readSelection()
    {
        if (m_parser.isSet(QStringLiteral("link")))
            m_request.link = wholeNumber("link");
        m_request.find = m_parser.value(QStringLiteral("find"));
        if (m_parser.isSet(QStringLiteral("find")) && m_request.find.isEmpty())
            fail(QStringLiteral("--find is empty: it would find nothing"));
    }

    void readRecipes()
    {
        m_request.recipes = m_parser.values(QStringLiteral("recipe"));
        for (const QString &recipe : qAsConst(m_request.recipes)) {
            if (recipe.indexOf(QLatin1Char('=')) < 1)
                fail(QStringLiteral("--recipe \"%1\" is not NAME=TAG").arg(recipe));
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

/// The command and its first argument, as far as they are there: the first arguments that are no options, which may
/// stand anywhere.
QStringList commandWords(const QStringList &arguments, QCommandLineParser &parser)
{
    QStringList known;
    for (const CommandText &command : commandTexts) {
        for (const QCommandLineOption &option : optionsOf(command.command)) {
            if (!known.contains(option.names().constFirst()))
                parser.addOption(option);
            known.append(option.names());
        }
    }
    parser.addOptions(databaseOptions(Request::Command::Drivers));
    parser.addOptions(commonOptions());
    parser.parse(arguments);
    return parser.positionalArguments();
}

} // namespace

CommandLine parseCommandLine(const QStringList &arguments)
{
    CommandLine result;
    QCommandLineParser parser;
    const QStringList words = commandWords(arguments, parser);
    const QString name = words.value(0);
    const CommandText *const command = findCommand(name, words.value(1));
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
