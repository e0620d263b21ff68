// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "requestreader.h"

#include "zelmar_label/label_table/labeltype.h"

#include <QHash>
#include <QRegularExpression>

namespace {

constexpr int mostItems = 1000000;

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
    // Every type except 0 selects all registers.
    return word == QLatin1String("register") ? std::optional<int>(label::WordType) : std::nullopt;
}

/// An argument in the usage: in capitals, in brackets if optional, with dots if more may follow.
struct Argument
{
    explicit Argument(QString word)
        : isOptional(word.startsWith(QLatin1Char('[')))
    {
        word.remove(QLatin1Char('[')).remove(QLatin1Char(']'));
        // Bytes may be separated by blanks.
        takesMany = word.endsWith(QLatin1String("...")) || word == QLatin1String("HEXBYTES");
        static const QHash<QString, QString> meanings = {
            {QStringLiteral("DRIVER"), QStringLiteral("the driver")},
            {QStringLiteral("ADDRESS"), QStringLiteral("the address")},
            {QStringLiteral("NAME"), QStringLiteral("the name of the driver")},
            {QStringLiteral("PROJECT"), QStringLiteral("the project")},
            {QStringLiteral("TAG"), QStringLiteral("the tag")},
            {QStringLiteral("VALUE"), QStringLiteral("the value")},
            {QStringLiteral("HEXBYTES"), QStringLiteral("the list of bytes")},
            {QStringLiteral("FILE"), QStringLiteral("the file to make")},
            {QStringLiteral("FILE.csv"), QStringLiteral("the file to read")},
            {QStringLiteral("FILE.tsv"), QStringLiteral("the driver file")},
        };
        meaning = meanings.value(word.remove(QLatin1String("...")));
    }

    QString meaning;
    bool isOptional;
    bool takesMany = false;
};

/// The arguments after the options of a usage; a required option before them is followed by its value.
QList<Argument> argumentsOf(const CommandText &text)
{
    QList<Argument> arguments;
    const QStringList usage = QString::fromLatin1(text.usage)
                                  .section(QLatin1String("[options]"), 1)
                                  .simplified()
                                  .split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (int index = 0; index < usage.size(); ++index) {
        if (usage.at(index).startsWith(QLatin1String("--")))
            ++index;
        else
            arguments.append(Argument(usage.at(index)));
    }
    return arguments;
}

/// Qt reads a negative number as options of one letter each.
QString hintOfNegativeNumber(const QString &error, const QStringList &arguments)
{
    static const QRegularExpression digitAsOption(QStringLiteral("^Unknown options?:? '?[0-9.]"));
    static const QRegularExpression negative(QStringLiteral("^-[0-9.]+$"));
    const int index = digitAsOption.match(error).hasMatch() ? arguments.indexOf(negative) : -1;
    return index < 0 ? QString()
                     : QStringLiteral("\"%1\" looks like an option; write -- before it").arg(arguments.at(index));
}

} // namespace

RequestReader::RequestReader(const CommandText &command)
    : m_text(command)
{
    m_request.command = command.command;
    m_parser.setApplicationDescription(QLatin1String(command.description));
    m_parser.addOptions(optionsOf(command.command));
}

CommandLine RequestReader::read(const QStringList &arguments)
{
    CommandLine result;
    const bool understood = m_parser.parse(arguments);
    if (m_parser.isSet(QStringLiteral("help"))) {
        result.text = help();
        return result;
    }
    if (!understood)
        m_error = hintOfNegativeNumber(m_parser.errorText(), arguments);
    if (!understood && m_error.isEmpty())
        m_error = m_parser.errorText().section(QLatin1Char('.'), 0, 0);
    readArguments();
    readOptions();
    if (m_error.isEmpty())
        result.request = m_request;
    else
        result.error = m_error;
    return result;
}

void RequestReader::fail(const QString &sentence)
{
    if (m_error.isEmpty())
        m_error = sentence;
}

/// Qt's help text begins with the program's path.
QString RequestReader::help() const
{
    const QString text = m_parser.helpText();
    return usageLine(QLatin1String(m_text.usage)) + text.mid(text.indexOf(QLatin1Char('\n')) + 1);
}

void RequestReader::readArguments()
{
    const QStringList positional = m_parser.positionalArguments().mid(m_text.words().size());
    countArguments(positional);
    if (m_request.isOfProject()) {
        m_request.project = positional.value(0);
        m_request.arguments = positional.mid(1);
    } else if (m_request.command == Request::Command::Compile || m_request.command == Request::Command::CustomFill ||
               m_request.command == Request::Command::Lint) {
        m_request.files = positional;
    } else {
        m_request.driver = positional.value(0);
        (m_request.isOfDriverFile() ? m_request.files : m_request.addresses) = positional.mid(1);
    }
}

void RequestReader::countArguments(const QStringList &positional)
{
    const QList<Argument> arguments = argumentsOf(m_text);
    bool takesMany = false;
    for (int index = 0; index < arguments.size(); ++index) {
        const Argument &argument = arguments.at(index);
        takesMany = takesMany || argument.takesMany;
        if (index >= positional.size() && !argument.isOptional)
            fail(QStringLiteral("%1 is missing").arg(argument.meaning));
    }
    if (!takesMany && positional.size() > arguments.size())
        fail(QStringLiteral("\"%1\" is one argument too many").arg(positional.at(arguments.size())));
}

void RequestReader::readOptions()
{
    m_request.json = m_parser.isSet(QStringLiteral("json"));
    m_request.debug = m_parser.isSet(QStringLiteral("debug"));
    for (const char *const option : {"database", "folder", "samples"}) {
        const QString name = QLatin1String(option);
        // Qt warns about options that a command does not have.
        if (m_parser.optionNames().contains(name) && m_parser.value(name).isEmpty())
            fail(QStringLiteral("--%1 is empty").arg(name));
    }
    if (m_request.takesDatabase())
        m_request.database = m_parser.value(QStringLiteral("database"));
    if (m_request.isOfCustomDatabase())
        m_request.folder = m_parser.value(QStringLiteral("folder"));
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
    case Request::Command::Lint:
        m_request.samples = m_parser.value(QStringLiteral("samples"));
        m_request.counts = m_parser.isSet(QStringLiteral("counts"));
        return;
    case Request::Command::ExportDriver:
        m_request.force = m_parser.isSet(QStringLiteral("force"));
        return;
    case Request::Command::Compile:
        readDatabaseToWrite();
        return;
    case Request::Command::NewDriver:
    case Request::Command::CustomShow:
    case Request::Command::CustomSetup:
    case Request::Command::CustomFill:
    case Request::Command::CustomDefault:
    case Request::Command::CustomDrop:
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

void RequestReader::readNeededCount()
{
    if (!m_parser.isSet(QStringLiteral("count")))
        fail(QStringLiteral("--count is missing: how many items to read"));
    readCount("count", m_request.count);
}

void RequestReader::readSelection()
{
    if (m_parser.isSet(QStringLiteral("link")))
        m_request.link = wholeNumber("link");
    m_request.find = m_parser.value(QStringLiteral("find"));
    if (m_parser.isSet(QStringLiteral("find")) && m_request.find.isEmpty())
        fail(QStringLiteral("--find is empty: it would find nothing"));
}

void RequestReader::readRecipes()
{
    m_request.recipes = m_parser.values(QStringLiteral("recipe"));
    for (const QString &recipe : qAsConst(m_request.recipes)) {
        if (recipe.indexOf(QLatin1Char('=')) < 1)
            fail(QStringLiteral("--recipe \"%1\" is not NAME=TAG").arg(recipe));
    }
}

void RequestReader::readFilter()
{
    if (!m_parser.isSet(QStringLiteral("type")))
        return;
    const QString word = m_parser.value(QStringLiteral("type"));
    const std::optional<int> filter = filterOf(word);
    if (!filter)
        fail(QStringLiteral("--type \"%1\" is not one of any, bit, register").arg(word));
    m_request.type = filter.value_or(label::anyType);
}

void RequestReader::readDataType(bool takesBits)
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

std::optional<int> RequestReader::wholeNumber(const char *option)
{
    const QString text = m_parser.value(QLatin1String(option));
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (isNumber)
        return number;
    fail(QStringLiteral("--%1 \"%2\" is not a whole number, or is too large").arg(QLatin1String(option), text));
    return std::nullopt;
}

void RequestReader::readCount(const char *option, int &count)
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

void RequestReader::readCap()
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

void RequestReader::readDatabaseToWrite()
{
    m_request.database = m_parser.value(QStringLiteral("into"));
    if (m_request.database.isEmpty())
        fail(QStringLiteral("--into is missing: the driver database to write"));
}
