// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "commandline.h"

#include "commandtexts.h"
#include "requestreader.h"

#include <QCommandLineParser>

namespace {

/// Why the words name no command.
QString commandFault(const QStringList &words)
{
    if (words.isEmpty())
        return QStringLiteral("the command is missing");
    const QStringList second = secondWords(words.constFirst());
    if (second.isEmpty())
        return QStringLiteral("there is no command \"%1\"").arg(words.constFirst());
    const QString all = second.join(QLatin1String(", "));
    return words.size() < 2 ? QStringLiteral("\"%1\" is followed by one of %2").arg(words.constFirst(), all)
                            : QStringLiteral("\"%1 %2\" is not a command; \"%1\" is followed by one of %3")
                                  .arg(words.constFirst(), words.at(1), all);
}

} // namespace

CommandLine parseCommandLine(const QStringList &arguments)
{
    CommandLine result;
    // The words of the command may be mixed with options.
    QCommandLineParser parser;
    parser.addOptions(allOptions());
    parser.parse(arguments);
    const QStringList words = parser.positionalArguments();
    if (parser.isSet(QStringLiteral("version"))) {
        result.text = QStringLiteral("zelmar-label " ZELMAR_LABEL_VERSION "\n");
        return result;
    }
    const CommandText *const command = findCommand(words);
    const QString group = secondWords(words.value(0)).isEmpty() ? QString() : words.value(0);
    if (!command && parser.isSet(QStringLiteral("help")) &&
        (words.isEmpty() || (words.size() == 1 && !group.isEmpty()))) {
        result.text = generalHelp(group);
        return result;
    }
    if (!command) {
        result.error = commandFault(words) + QLatin1Char('\n') + generalHelp(group);
        return result;
    }
    result = RequestReader(*command).read(arguments);
    if (!result.error.isEmpty())
        result.error += QLatin1Char('\n') + usageLine(QLatin1String(command->usage)) +
                        QStringLiteral("\"zelmar-label %1 --help\" shows more.\n").arg(QLatin1String(command->name));
    return result;
}
