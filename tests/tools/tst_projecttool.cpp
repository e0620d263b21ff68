// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/projectfixtures.h"
#include "support/toolprocess.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTest>

namespace {

const char *const header = "name,link,data type,address,scale\n";

Row row(const char *pattern, int type, const char *description, const char *symbol, const char *end, int dataSize,
        int blocksize, const char *rule = "")
{
    Row made;
    made.pattern = QLatin1String(pattern);
    made.type = type;
    made.description = QLatin1String(description);
    made.prefixSymbol = QLatin1String(symbol);
    made.end = QLatin1String(end);
    made.dataSize = dataSize;
    made.blocksize = blocksize;
    made.multipleRule = QLatin1String(rule);
    return made;
}

Driver plc()
{
    Driver made;
    made.name = QStringLiteral("Test PLC");
    made.rows = {
        row("(D)(\\d{1,4})", 2, "D: data register, e.g. D100", "D", "7999", 2, 64),
        row("(D)(\\d{1,4}\\.[0-9A-F])", 0, "Dn.b: bit of a data register, e.g. D1.A", "D", "7999", 2, 64, "dot-f:r"),
        row("(B)(\\d{1,4})", 1, "B: byte, e.g. B5", "B", "999", 1, 1)};
    return made;
}

QList<TagRow> tagRows()
{
    const auto tag = [](int id, const char *name, int link, int type, const char *address, int scale = 1) {
        TagRow made;
        made.id = id;
        made.name = QLatin1String(name);
        made.connectorId = link;
        made.dataType = type;
        made.address = QLatin1String(address);
        made.scale = scale;
        return made;
    };
    return {tag(1, "Internal", 0, 0, ""),       tag(2, "Speed", 1, 3, "D100"),    tag(3, "Level", 1, 4, "2-D200"),
            tag(4, "Title", 1, 8, "D300", 4),   tag(5, "Flow", 1, 7, "D400"),     tag(6, "Off", 2, 1, "B1"),
            tag(7, "TooHigh", 1, 3, "D8000"),   tag(8, "NoLink", 9, 3, "D1"),     tag(9, "NoDriver", 3, 3, "D1"),
            tag(10, "NoStation", 1, 3, "7-D1"), tag(11, "NoType", 1, 12, "D1"),   tag(12, "Twice", 0, 1, ""),
            tag(13, "Twice", 0, 1, ""),         tag(14, "Signed", 0, 10, ""),     tag(15, "Unsigned", 0, 11, ""),
            tag(16, "Double", 0, 9, ""),        tag(17, "NoLength", 0, 8, "", 0), tag(18, "Pair", 1, 3, "B2")};
}

QList<QJsonObject> objectsOf(const QString &lines)
{
    QList<QJsonObject> objects;
    for (const QString &line : lines.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        objects.append(QJsonDocument::fromJson(line.toUtf8()).object());
    return objects;
}

} // namespace

/// Runs a copy of the built program in a folder with the test's own projects.
class TestProjectTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void outputs_data();
    void outputs();
    void tagAsJson();
    void unreadable_data();
    void unreadable();
    void readingNeverWrites();
    void missingDriverDatabase();
    void usage_data();
    void usage();
    void importRefusals_data();
    void importRefusals();
    void importNamesEveryRefusedLine();
    void importRefusalsAsJson();
    void importAddsAndChanges();
    void importOfDryRunWritesNothing();
    void importMakesTheTable();
    void databasesOfAnotherKindStayAsTheyAre();
    void importReadsQuotesAndLineEnds();
    void importIsUndoneWhenTheDatabaseRefuses();
    void importIntoReadOnlyProject();
    void importIntoLockedProject();
    void exportComesBackUnchanged();
    void exportWarnsOfDoubledNames();
    void idsOfOtherTagsAreReported_data();
    void idsOfOtherTagsAreReported();
    void importOfManyTags();
    void systemTags();
    void sampleProject();
    void sampleProjectOverwritesNothing();

private:
    Result run(const QStringList &arguments, const QByteArray &input = QByteArray(),
               const QString &folder = QString()) const;
    QStringList rows(const QString &file, const QString &statement) const;
    QString path(const char *name) const { return m_folder.filePath(QLatin1String(name)); }

    QDir m_folder;
};

void TestProjectTool::initTestCase()
{
    m_folder = QDir(QCoreApplication::applicationDirPath());
    QVERIFY(m_folder.mkpath(QStringLiteral("tool/database")));
    QVERIFY(m_folder.cd(QStringLiteral("tool")));
    copyTool(QStringLiteral(ZELMAR_LABEL_TOOL), m_folder.path());
    writeDriverDatabase(path("database/drivers"), {plc()});
}

void TestProjectTool::init()
{
    QFile::setPermissions(path("project.db"), QFile::ReadOwner | QFile::WriteOwner);
    makeProject(
        path("project.db"), QStringLiteral("made"),
        {{1, QStringLiteral("Test PLC"), 1}, {2, QStringLiteral("Test PLC"), 0}, {3, QStringLiteral("No PLC"), 1}},
        {{1, 1, 1}, {2, 2, 1}, {3, 1, 2}});
    writeTags(QStringLiteral("made"), tagRows());
    closeProject(QStringLiteral("made"));
}

Result TestProjectTool::run(const QStringList &arguments, const QByteArray &input, const QString &folder) const
{
    const QString program = (folder.isEmpty() ? m_folder.path() : folder) + QStringLiteral("/zelmar-label");
    return runProcess(program, arguments, input, m_folder.path());
}

QStringList TestProjectTool::rows(const QString &file, const QString &statement) const
{
    openProject(m_folder.filePath(file), QStringLiteral("looked at"));
    const QStringList found = rowsOn(QStringLiteral("looked at"), statement);
    closeProject(QStringLiteral("looked at"));
    return found;
}

void TestProjectTool::outputs_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("out");
    QTest::addColumn<QString>("err");

    const auto add = [](const char *name, const char *arguments, int code, const char *out, const char *err = "") {
        QTest::newRow(name) << argumentsOf(arguments) << code << QString::fromUtf8(out) << QString::fromUtf8(err);
    };

    add("tags of a disabled link", "tags|project.db|--link|2", 0,
        "verdict  id  name  link          driver    data type  address  command         scan time  reason\n"
        "ok       6   Off   2 (disabled)  Test PLC  INT(8)     B1       byte, length 1  1          -\n");
    add("tags by the characters of their name", "tags|project.db|--find|lvl", 0,
        "verdict  id  name   link  driver    data type  address  command         scan time  reason\n"
        "ok       3   Level  1     Test PLC  UINT(16)   2-D200   word, length 1  1          -\n");
    add("a text tag has its length", "tags|project.db|--find|title", 0,
        "verdict  id  name   link  driver    data type  address  command         scan time  reason\n"
        "ok       4   Title  1     Test PLC  Ascii      D300     text, length 4  1          -\n");
    add("an address above the last", "tags|project.db|--find|toohigh", 1,
        "verdict  id  name     link  driver    data type  address  command         scan time  reason\n"
        "refused  7   TooHigh  1     Test PLC  INT(16)    D8000    word, length 1  1          number 8000 is above "
        "D's last, 7999\n");
    add("a link that the project lacks", "tags|project.db|--find|nolink", 1,
        "verdict  id  name    link  driver  data type  address  command         scan time  reason\n"
        "refused  8   NoLink  9     -       INT(16)    D1       word, length 1  1          the project has no link "
        "9\n");
    add("a driver that is not there", "tags|project.db|--find|nodriver", 1,
        "verdict  id  name      link  driver  data type  address  command         scan time  reason\n"
        "refused  9   NoDriver  3     No PLC  INT(16)    D1       word, length 1  1          link 3: there is no "
        "driver \"No PLC\"\n");
    add("a station that the link lacks", "tags|project.db|--find|nostation", 1,
        "verdict  id  name       link  driver    data type  address  command         scan time  reason\n"
        "refused  10  NoStation  1     Test PLC  INT(16)    7-D1     word, length 1  1          link 1 has no station "
        "7\n");
    add("no tag has the characters", "tags|project.db|--find|zzz", 0,
        "verdict  id  name  link  driver  data type  address  command  scan time  reason\n");

    add("one command is the tag's own", "commands|project.db|Speed", 0, "D100  length 1  word\n");
    add("commands go on from the address and keep the station", "commands|project.db|Level|--count|2", 0,
        "2-D200  length 1  word\n2-D201  length 1  word\n");
    add("a tag is given by its id", "commands|project.db|2|--json", 0,
        "{\"address\":\"D100\",\"dataType\":\"word\",\"length\":1,\"scanTime\":1}\n");
    add("a system tag has one command", "commands|project.db|S>Year", 0, "S>Year  length 1  double word\n");
    add("a system tag by its id", "commands|project.db|20022", 0, "S>Year  length 1  double word\n");
    add("an internal tag has no addresses", "commands|project.db|Internal|--count|2", 1, "",
        "zelmar-label: Internal: it has no device, so no items follow it\n");
    add("commands of a refused tag", "commands|project.db|TooHigh", 1, "",
        "zelmar-label: TooHigh: number 8000 is above D's last, 7999\n");
    add("a tag that is not there", "commands|project.db|Nothing", 1, "",
        "zelmar-label: there is no tag \"Nothing\" in project.db\n");
    add("an id that is not there", "commands|project.db|99", 1, "",
        "zelmar-label: there is no tag \"99\" in project.db\n");
    add("a name that two tags have", "commands|project.db|Twice", 1, "",
        "zelmar-label: 2 tags have the name \"Twice\"; give an id\n");
    add("one of two tags of a name by its id", "commands|project.db|13", 0, "-  length 1  byte\n");
    add("a recipe tag stands for a tag", "commands|project.db|R>1_1|--recipe|R>1_1=Speed", 0,
        "R>1_1  length 1  word\n");
    add("a recipe tag needs its prefix", "commands|project.db|X|--recipe|X=Speed", 1, "",
        "zelmar-label: \"X\" is not a recipe tag name: those begin with \"R>\"\n");

    add("blocks of a tag", "blocks|project.db|Speed|--count|130", 0,
        "D100  length 64  word\nD164  length 64  word\nD228  length 2   word\n");
    add("blocks as JSON", "blocks|project.db|Speed|--count|3|--json", 0,
        "{\"address\":\"D100\",\"dataType\":\"word\",\"length\":3,\"scanTime\":1}\n");
    add("blocks of a driver are still asked for", "blocks|Test PLC|D0|--count|65", 0,
        "D0   length 64  word\nD64  length 1   word\n");
    add("blocks beyond the end", "blocks|project.db|Speed|--count|8000", 1, "",
        "zelmar-label: Speed: only 7900 of 8000 items follow: D ends at 7999\n");
    add("a block that holds no item", "blocks|project.db|Pair|--count|2", 1, "",
        "zelmar-label: Pair: the driver allows no block with an item of its type\n");
    add("blocks of an internal tag", "blocks|project.db|Internal|--count|2", 1, "",
        "zelmar-label: Internal: it has no device, so there are no blocks to read\n");

    add("a negative number is encoded", "encode|project.db|Speed|--|-2", 0, "FEFF\n");
    add("a bit is encoded", "encode|project.db|Internal|1", 0, "01\n");
    add("a text is filled up", "encode|project.db|Title|AB", 0, "41420000\n");
    add("a text that is too long", "encode|project.db|Title|ABCDE", 1, "",
        "zelmar-label: Title: the text has 5 bytes, the tag 4\n");
    add("a float is encoded", "encode|project.db|Flow|0.1|--json", 0,
        "{\"id\":5,\"name\":\"Flow\",\"dataType\":\"FLOAT\",\"value\":0.1,\"bytes\":\"CDCCCC3D\"}\n");
    add("the greatest number of 64 bits", "encode|project.db|Unsigned|18446744073709551615", 0, "FFFFFFFFFFFFFFFF\n");
    add("the least number of 64 bits", "encode|project.db|Signed|--|-9223372036854775808", 0, "0000000000000080\n");
    add("a number beyond the limits", "encode|project.db|Speed|32768", 1, "",
        "zelmar-label: Speed: 32768 is not between -32768 and 32767\n");
    add("a float beyond the limits", "encode|project.db|Flow|3.5e37", 1, "",
        "zelmar-label: Flow: 3.5e37 is not between -3.4e+37 and 3.4e+37\n");
    add("infinity is no number", "encode|project.db|Double|inf", 1, "",
        "zelmar-label: Double: \"inf\" is not a number\n");
    add("a word is no number", "encode|project.db|Speed|fast", 1, "",
        "zelmar-label: Speed: \"fast\" is not a whole number, or is beyond the limits\n");
    add("a value of an unknown type", "encode|project.db|NoType|1", 1, "",
        "zelmar-label: NoType: there is no data type 12\n");

    add("bytes are decoded", "decode|project.db|Speed|FEFF", 0, "-2\n");
    add("bytes with blanks and in lower case", "decode|project.db|Speed|fe ff", 0, "-2\n");
    add("bytes in several arguments", "decode|project.db|Speed|FE|FF", 0, "-2\n");
    add("any bit set is a set bit", "decode|project.db|Internal|05|--json", 0,
        "{\"id\":1,\"name\":\"Internal\",\"dataType\":\"Bit\",\"bytes\":\"05\",\"value\":true}\n");
    add("numbers of 64 bits are texts in JSON", "decode|project.db|Unsigned|FFFFFFFFFFFFFFFF|--json", 0,
        "{\"id\":15,\"name\":\"Unsigned\",\"dataType\":\"UINT(64)\",\"bytes\":\"FFFFFFFFFFFFFFFF\","
        "\"value\":\"18446744073709551615\"}\n");
    add("a text ends at a zero byte", "decode|project.db|Title|41004200", 0, "A\n");
    add("too few bytes", "decode|project.db|Speed|FE", 1, "", "zelmar-label: Speed: the tag has 2 bytes, not 1\n");
    add("too many bytes", "decode|project.db|Speed|FEFF00", 1, "", "zelmar-label: Speed: the tag has 2 bytes, not 3\n");
    add("half a byte", "decode|project.db|Speed|FEF", 1, "",
        "zelmar-label: Speed: \"FEF\" is not a list of hexadecimal bytes\n");
    add("letters that are no digits", "decode|project.db|Speed|GGGG", 1, "",
        "zelmar-label: Speed: \"GGGG\" is not a list of hexadecimal bytes\n");

    add("limits of chosen tags", "limits|project.db|Speed|Title|Flow|Signed", 0,
        "id  name    data type  least                 greatest             bytes of text\n"
        "2   Speed   INT(16)    -32768                32767                -\n"
        "4   Title   Ascii      -                     -                    4\n"
        "5   Flow    FLOAT      -3.4e+37              3.4e+37              -\n"
        "14  Signed  INT(64     -9223372036854775808  9223372036854775807  -\n");
    add("limits as JSON", "limits|project.db|Speed|Title|--json", 0,
        "{\"id\":2,\"name\":\"Speed\",\"dataType\":\"INT(16)\",\"least\":-32768,\"greatest\":32767,\"length\":null}\n"
        "{\"id\":4,\"name\":\"Title\",\"dataType\":\"Ascii\",\"least\":null,\"greatest\":null,\"length\":4}\n");
}

void TestProjectTool::outputs()
{
    QFETCH(QStringList, arguments);
    const Result result = run(arguments);
    QTEST(result.err, "err");
    QTEST(result.out, "out");
    QTEST(result.code, "code");
}

void TestProjectTool::tagAsJson()
{
    const Result result = run(argumentsOf("tags|project.db|--link|1|--json"));
    QCOMPARE(result.code, 1);
    QCOMPARE(result.err, QString());
    const QStringList lines = result.out.split(QLatin1Char('\n'));
    QCOMPARE(lines.at(1),
             QStringLiteral("{\"id\":3,\"name\":\"Level\",\"link\":1,\"linkEnabled\":true,\"driver\":\"Test PLC\","
                            "\"dataType\":\"UINT(16)\",\"address\":\"2-D200\",\"valid\":true,\"reason\":null,"
                            "\"command\":{\"address\":\"2-D200\",\"dataType\":\"word\",\"length\":1},\"scanTime\":1,"
                            "\"scale\":1}"));
    QCOMPARE(objectsOf(result.out).at(6).value(QStringLiteral("reason")).toString(),
             QStringLiteral("there is no data type 12"));
}

void TestProjectTool::unreadable_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("err");

    QTest::newRow("a text file is no project") << QByteArray("this is a text and no database at all, however long\n")
                                               << "zelmar-label: other.db is not a project (file is not a database)\n";
    QTest::newRow("an empty file has no tags")
        << QByteArray() << "zelmar-label: other.db has no tag table; \"zelmar-label import\" makes one\n";
}

void TestProjectTool::unreadable()
{
    QFETCH(QByteArray, content);
    writeFile(path("other.db"), content);
    for (const char *arguments : {"tags|other.db", "commands|other.db|A", "encode|other.db|A|1", "export|other.db"}) {
        const Result result = run(argumentsOf(arguments));
        QTEST(result.err, "err");
        QCOMPARE(result.out, QString());
        QCOMPARE(result.code, 3);
    }
    QCOMPARE(contentOf(path("other.db")), content);
    for (const char *arguments : {"tags|none.db", "import|none.db|-"}) {
        const Result result = run(argumentsOf(arguments), header);
        QCOMPARE(result.err, QStringLiteral("zelmar-label: there is no project at none.db\n"));
        QCOMPARE(result.code, 3);
    }
    QVERIFY(!QFile::exists(path("none.db")));
}

void TestProjectTool::readingNeverWrites()
{
    const QByteArray before = contentOf(path("project.db"));
    for (const char *arguments :
         {"tags|project.db", "commands|project.db|Speed", "blocks|project.db|Speed|--count|3",
          "encode|project.db|Speed|1", "decode|project.db|Speed|0100", "limits|project.db", "export|project.db"})
        QVERIFY2(run(argumentsOf(arguments)).code <= 1, arguments);
    QCOMPARE(contentOf(path("project.db")), before);
}

void TestProjectTool::missingDriverDatabase()
{
    copyTool(path("zelmar-label"), path("bare"));
    const Result result = run(argumentsOf("tags|project.db"), QByteArray(), path("bare"));
    QCOMPARE(result.err,
             QStringLiteral("zelmar-label: there is no driver database at %1\n").arg(path("bare/database/drivers")));
    QCOMPARE(result.code, 3);
}

void TestProjectTool::usage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("sentence");

    const auto add = [](const char *name, const char *arguments, const char *sentence) {
        QTest::newRow(name) << argumentsOf(arguments) << QString::fromUtf8(sentence);
    };
    add("no project", "tags", "the project is missing");
    add("no tag", "commands|project.db", "the tag is missing");
    add("no value", "encode|project.db|Speed", "the value is missing");
    add("a negative value that reads as an option", "encode|project.db|Speed|-55",
        "\"-55\" looks like an option; write -- before it");
    add("a negative fraction", "encode|project.db|Speed|-1.5", "\"-1.5\" looks like an option; write -- before it");
    add("no bytes", "decode|project.db|Speed", "the list of bytes is missing");
    add("no file", "import|project.db", "the file to read is missing");
    add("one argument too many", "export|project.db|more", "\"more\" is one argument too many");
    add("blocks of a tag need a count", "blocks|project.db|Speed", "--count is missing: how many items to read");
    add("a link that is no number", "tags|project.db|--link|x", "--link \"x\" is not a whole number, or is too large");
    add("an empty text to find", "tags|project.db|--find|", "--find is empty: it would find nothing");
    add("a recipe without a tag", "tags|project.db|--recipe|R>1", "--recipe \"R>1\" is not NAME=TAG");
    add("a driver database for a project", "tags|project.db|--database|x", "Unknown option 'database'");
}

void TestProjectTool::usage()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, sentence);
    const Result result = run(arguments);
    QCOMPARE(result.err.section(QLatin1Char('\n'), 0, 0), QLatin1String("zelmar-label: ") + sentence);
    QCOMPARE(result.out, QString());
    QCOMPARE(result.code, 2);
}

void TestProjectTool::importRefusals_data()
{
    QTest::addColumn<QByteArray>("csv");
    QTest::addColumn<QString>("err");

    const auto add = [](const char *name, const QByteArray &csv, const char *err) {
        QTest::newRow(name) << csv << QString::fromUtf8(err);
    };
    const auto line = [&add](const char *name, const char *text, const char *err) {
        add(name, header + QByteArray(text), err);
    };

    line("an empty name", ",1,INT(16),D1,1\n", "2: the name is empty");
    line("a system name", "S>Year,1,INT(16),D1,1\n",
         "2: S>Year: names that begin with \"S>\" are reserved for system tags");
    line("a system name in lower case", "s>x,1,INT(16),D1,1\n",
         "2: s>x: names that begin with \"s>\" are reserved for system tags");
    line("a recipe name", "R>1_1,1,INT(16),D1,1\n",
         "2: R>1_1: names that begin with \"R>\" are reserved for recipe tags");
    line("a name that stands twice", "A,1,INT(16),D1,1\n\nA,1,INT(16),D2,1\n", "4: A: line 2 has the same name");
    line("a name that two tags of the project have", "Twice,0,INT(16),,1\n",
         "2: Twice: 2 tags of the project have this name");
    line("a name that would become a number", "007,0,Bit,,1\n", "2: 007: the project would store the name as \"7\"");
    line("an address that would become a number", "A,1,INT(16),00001,1\n",
         "2: A: the project would store the address 00001 as \"1\"");
    line("a link that the project lacks", "A,9,INT(16),D1,1\n", "2: A: the project has no link 9");
    line("a link that is no number", "A,x,INT(16),D1,1\n", "2: A: the link \"x\" is not a whole number");
    line("a link without a driver", "A,3,INT(16),D1,1\n", "2: A: link 3: there is no driver \"No PLC\"");
    line("an unknown data type", "A,1,INT(17),D1,1\n", "2: A: there is no data type \"INT(17)\"");
    line("a data type's number that is none", "A,1,12,D1,1\n", "2: A: there is no data type \"12\"");
    line("an address above the last", "A,1,INT(16),D8000,1\n", "2: A: number 8000 is above D's last, 7999");
    line("a register for a bit", "A,1,Bit,D1,1\n", "2: A: D1 is a word, not a bit");
    line("a station that the link lacks", "A,1,INT(16),7-D1,1\n", "2: A: link 1 has no station 7");
    line("a text without a length", "A,1,Ascii,D1,0\n", "2: A: a text needs a length, its scale, of at least 1");
    line("a scale that is no number", "A,1,INT(16),D1,one\n", "2: A: the scale \"one\" is not a whole number");
    line("a field too few", "A,1,INT(16),D1\n", "2: A: it has 4 fields, the first line 5");
    line("a field too many", "A,1,INT(16),D1,1,1\n", "2: A: it has 6 fields, the first line 5");
    line("a line is counted where the row begins", "A,1,INT(16),D1,1\n\"B\nB\",1,x,D1,1\n",
         "3: B\nB: there is no data type \"x\"");
    line("bytes that are not UTF-8", "A\xff,1,INT(16),D1,1\n", "2: the text is not UTF-8");
    line("a quote that is not closed", "\"A,1,INT(16),D1,1\n", "2: a quote is opened and not closed");
    add("an empty file", "", "1: the line of column names is missing");
    add("a column that is missing", "name,link,address\n", "1: the column \"data type\" is missing");
    add("a column that is unknown", "name,link,data type,address,colour\n", "1: there is no column \"colour\"");
    add("a column that stands twice", "name,name,link,data type,address\n", "1: the column \"name\" appears twice");
}

void TestProjectTool::importRefusals()
{
    QFETCH(QByteArray, csv);
    QFETCH(QString, err);
    const QByteArray before = contentOf(path("project.db"));
    writeFile(path("tags.csv"), csv);
    for (const char *arguments : {"import|project.db|tags.csv", "import|project.db|tags.csv|--dry-run"}) {
        const Result result = run(argumentsOf(arguments));
        const QString line = QLatin1String("zelmar-label: tags.csv:") + err + QLatin1Char('\n');
        QCOMPARE(result.err.left(line.size()), line);
        QCOMPARE(result.out, QString());
        QCOMPARE(result.code, 1);
    }
    QCOMPARE(contentOf(path("project.db")), before);
}

void TestProjectTool::importNamesEveryRefusedLine()
{
    const QByteArray before = contentOf(path("project.db"));
    const QByteArray csv = header + QByteArray("Good,1,INT(16),D1,1\n,1,INT(16),D1,1\nBad,9,INT(16),D1,1\n");
    const Result result = run(argumentsOf("import|project.db|-"), csv);
    QCOMPARE(result.err, QStringLiteral("zelmar-label: -:3: the name is empty\n"
                                        "zelmar-label: -:4: Bad: the project has no link 9\n"
                                        "zelmar-label: 2 lines are refused; nothing is imported\n"));
    QCOMPARE(result.code, 1);
    QCOMPARE(contentOf(path("project.db")), before);
}

void TestProjectTool::importRefusalsAsJson()
{
    const QByteArray csv = header + QByteArray("Bad,9,INT(16),D1,1\n");
    const Result result = run(argumentsOf("import|project.db|-|--json"), csv);
    QCOMPARE(result.out, QStringLiteral("{\"line\":2,\"name\":\"Bad\",\"reason\":\"the project has no link 9\"}\n"));
    QCOMPARE(result.code, 1);
}

void TestProjectTool::importAddsAndChanges()
{
    const QByteArray csv = header + QByteArray("New,1,INT(64),D10,1\nSpeed,1,UINT(16),2-D11,3\nFlow,1,FLOAT,D400,1\n");
    const Result result = run(argumentsOf("import|project.db|-"), csv);
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out, QStringLiteral("1 added, 1 changed, 1 unchanged\n"));
    QCOMPARE(result.code, 0);
    QCOMPARE(rows(QStringLiteral("project.db"),
                  QStringLiteral("SELECT id,name,access,connector_id,data_type,address,scale FROM custom_tag_table "
                                 "WHERE name IN ('New','Speed','Flow') ORDER BY id")),
             QStringList({QStringLiteral("2|Speed|1|1|4|2-D11|3"), QStringLiteral("5|Flow|0|1|7|D400|1"),
                          QStringLiteral("19|New|0|1|10|D10|1")}));
    QCOMPARE(rows(QStringLiteral("project.db"), QStringLiteral("PRAGMA integrity_check")),
             QStringList(QStringLiteral("ok")));
}

void TestProjectTool::importOfDryRunWritesNothing()
{
    const QByteArray before = contentOf(path("project.db"));
    const QByteArray csv = header + QByteArray("New,1,3,D10,1\nSpeed,1,UINT(16),D11,1\n");
    const Result result = run(argumentsOf("import|project.db|-|--dry-run"), csv);
    QCOMPARE(result.out, QStringLiteral("would be: 1 added, 1 changed, 0 unchanged\n"));
    QCOMPARE(result.code, 0);
    QCOMPARE(run(argumentsOf("import|project.db|-|--dry-run|--json"), csv).out,
             QStringLiteral("{\"added\":1,\"changed\":1,\"unchanged\":0,\"dryRun\":true}\n"));
    QCOMPARE(contentOf(path("project.db")), before);
}

void TestProjectTool::importMakesTheTable()
{
    writeFile(path("other.db"), QByteArray());
    const QByteArray csv = header + QByteArray("New,0,Bit,,1\n");
    QCOMPARE(run(argumentsOf("import|other.db|-|--dry-run"), csv).out,
             QStringLiteral("would be: 1 added, 0 changed, 0 unchanged\n"));
    QCOMPARE(contentOf(path("other.db")), QByteArray());
    QCOMPARE(run(argumentsOf("import|other.db|-"), csv + ",0,Bit,,1\n").code, 1);
    QCOMPARE(contentOf(path("other.db")), QByteArray());
    const Result result = run(argumentsOf("import|other.db|-"), csv);
    QCOMPARE(result.err, QString());
    QCOMPARE(result.code, 0);
    QCOMPARE(rows(QStringLiteral("other.db"), QStringLiteral("SELECT id,name FROM custom_tag_table")),
             QStringList(QStringLiteral("1|New")));
}

void TestProjectTool::databasesOfAnotherKindStayAsTheyAre()
{
    const QString drivers = path("other.db");
    QFile::remove(drivers);
    QVERIFY(QFile::copy(path("database/drivers"), drivers));
    const QByteArray before = contentOf(drivers);
    const QByteArray csv = header + QByteArray("New,0,Bit,,1\n");
    for (const char *arguments : {"import|other.db|-", "import|other.db|-|--dry-run", "tags|other.db"}) {
        const Result result = run(argumentsOf(arguments), csv);
        QCOMPARE(result.err,
                 QStringLiteral("zelmar-label: other.db is not a project: it has neither a tag table nor a table "
                                "LINK\n"));
        QCOMPARE(result.code, 3);
        QCOMPARE(contentOf(drivers), before);
    }
}

void TestProjectTool::importReadsQuotesAndLineEnds()
{
    const QByteArray csv("\xef\xbb\xbf"
                         "Address,Name,Link,Data Type\r\n"
                         "D1,\"A, \"\"B\"\"\",1,INT(16)\r\n"
                         "D2,\"two\nlines\",1,3\r\n"
                         "\r\n"
                         "D3,it's \xf0\x9f\x98\x80,1,INT(64)");
    const Result result = run(argumentsOf("import|project.db|-"), csv);
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out, QStringLiteral("3 added, 0 changed, 0 unchanged\n"));
    QCOMPARE(
        rows(QStringLiteral("project.db"),
             QStringLiteral("SELECT name,data_type,address,scale FROM custom_tag_table WHERE id > 18 ORDER BY id")),
        QStringList({QStringLiteral("A, \"B\"|3|D1|1"), QStringLiteral("two\nlines|3|D2|1"),
                     QString::fromUtf8("it's \xf0\x9f\x98\x80|10|D3|1")}));
}

void TestProjectTool::importIsUndoneWhenTheDatabaseRefuses()
{
    openProject(path("project.db"), QStringLiteral("made"));
    executeOn(QStringLiteral("made"),
              QStringLiteral("CREATE TRIGGER no BEFORE INSERT ON custom_tag_table WHEN NEW.name = 'B' BEGIN SELECT "
                             "RAISE(ABORT, 'no B'); END"));
    closeProject(QStringLiteral("made"));
    const QByteArray before = contentOf(path("project.db"));
    const Result result =
        run(argumentsOf("import|project.db|-"), header + QByteArray("A,0,Bit,,1\nB,0,Bit,,1\nC,0,Bit,,1\n"));
    QCOMPARE(result.err, QStringLiteral("zelmar-label: project.db: Insert tag error.\n"
                                        "zelmar-label: nothing is imported\n"));
    QCOMPARE(result.out, QString());
    QCOMPARE(result.code, 3);
    QCOMPARE(contentOf(path("project.db")), before);
}

void TestProjectTool::importIntoReadOnlyProject()
{
    QVERIFY(QFile::setPermissions(path("project.db"), QFile::ReadOwner));
    if (QFile(path("project.db")).open(QIODevice::ReadWrite))
        QSKIP("this user may write everything");
    const Result result = run(argumentsOf("import|project.db|-"), header + QByteArray("A,0,Bit,,1\n"));
    QCOMPARE(result.err, QStringLiteral("zelmar-label: the project project.db is read-only\n"));
    QCOMPARE(result.code, 3);
    QCOMPARE(run(argumentsOf("commands|project.db|Speed")).code, 0);
}

void TestProjectTool::importIntoLockedProject()
{
    openProject(path("project.db"), QStringLiteral("made"));
    executeOn(QStringLiteral("made"), QStringLiteral("BEGIN IMMEDIATE"));
    const Result result = run(argumentsOf("import|project.db|-"), header + QByteArray("A,0,Bit,,1\n"));
    executeOn(QStringLiteral("made"), QStringLiteral("ROLLBACK"));
    closeProject(QStringLiteral("made"));
    QCOMPARE(result.err,
             QStringLiteral("zelmar-label: the project project.db cannot be written (database is locked)\n"));
    QCOMPARE(result.code, 3);
}

void TestProjectTool::exportComesBackUnchanged()
{
    const QByteArray csv = header + QByteArray("\"a \"\"quote\"\", a comma\n and a line\",1,INT(64),D7,1\n");
    openProject(path("project.db"), QStringLiteral("made"));
    executeOn(QStringLiteral("made"),
              QStringLiteral("DELETE FROM custom_tag_table WHERE name LIKE 'No%' OR name IN ('Twice', 'TooHigh')"));
    closeProject(QStringLiteral("made"));
    QCOMPARE(run(argumentsOf("import|project.db|-"), csv).code, 0);
    const Result exported = run(argumentsOf("export|project.db"));
    QCOMPARE(exported.err, QString());
    QCOMPARE(exported.out.section(QLatin1Char('\n'), 0, 2),
             QStringLiteral("\"name\",\"link\",\"data type\",\"address\",\"scale\"\n"
                            "\"Internal\",\"0\",\"Bit\",\"\",\"1\"\n"
                            "\"Speed\",\"1\",\"INT(16)\",\"D100\",\"1\""));
    const Result imported = run(argumentsOf("import|project.db|-"), exported.out.toUtf8());
    QCOMPARE(imported.err, QString());
    QCOMPARE(imported.out, QStringLiteral("0 added, 0 changed, 11 unchanged\n"));
}

void TestProjectTool::exportWarnsOfDoubledNames()
{
    const Result result = run(argumentsOf("export|project.db|--json"));
    QCOMPARE(result.err, QStringLiteral("zelmar-label: more than one tag has the name \"Twice\": import uses only "
                                        "the first\n"));
    QCOMPARE(result.out.section(QLatin1Char('\n'), 3, 3),
             QStringLiteral("{\"name\":\"Title\",\"link\":1,\"dataType\":\"Ascii\",\"address\":\"D300\",\"scale\":4}"));
    QCOMPARE(result.code, 0);
}

void TestProjectTool::idsOfOtherTagsAreReported_data()
{
    QTest::addColumn<QList<int>>("ids");
    QTest::addColumn<QString>("warning");
    QTest::newRow("one")
        << QList<int>{20000}
        << "1 tag of %1 has the id of a system or recipe tag (20000): its address is not used; give it "
           "another id";
    QTest::newRow("several") << QList<int>{20000, 30000, 60000}
                             << "3 tags of %1 have ids of system or recipe tags (20000, 30000, 60000): their addresses "
                                "are not used; give them other ids";
    QTest::newRow("many") << QList<int>{20001, 20002, 20003, 20004, 20005, 20006}
                          << "6 tags of %1 have ids of system or recipe tags (20001, 20002, 20003, 20004, 20005, ...): "
                             "their addresses are not used; give them other ids";
    QTest::newRow("beside them") << QList<int>{19999, 21001, 29999, 60001} << "";
}

/// By every command that reads a project; nothing else changes.
void TestProjectTool::idsOfOtherTagsAreReported()
{
    QFETCH(QList<int>, ids);
    QFETCH(QString, warning);
    openProject(path("project.db"), QStringLiteral("made"));
    for (const int id : qAsConst(ids))
        executeOn(QStringLiteral("made"), QStringLiteral("INSERT INTO custom_tag_table (id, name) VALUES (?, ?)"),
                  {id, QStringLiteral("At %1").arg(id)});
    closeProject(QStringLiteral("made"));
    const QString line = warning.isEmpty()
                             ? QString()
                             : QStringLiteral("zelmar-label: ") + warning.arg("project.db") + QLatin1Char('\n');
    for (const char *arguments : {"tags|project.db|--link|1", "limits|project.db|Speed", "encode|project.db|Speed|1"})
        QCOMPARE(run(argumentsOf(arguments)).err, line);
    const Result imported = run(argumentsOf("import|project.db|-"), QByteArray(header) + "New,0,Bit,,1\n");
    QCOMPARE(imported.err, line);
    QCOMPARE(imported.code, 0);
}

void TestProjectTool::importOfManyTags()
{
    QByteArray csv = header;
    for (int number = 0; number < 5000; ++number)
        csv += "Many_" + QByteArray::number(number) + ",1,INT(16),D" + QByteArray::number(number) + ",1\n";
    const Result result = run(argumentsOf("import|project.db|-"), csv);
    // Progress is for terminals.
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out, QStringLiteral("5000 added, 0 changed, 0 unchanged\n"));
    QCOMPARE(rows(QStringLiteral("project.db"), QStringLiteral("SELECT count(*) FROM custom_tag_table")),
             QStringList(QStringLiteral("5018")));
}

void TestProjectTool::systemTags()
{
    const Result result = run(argumentsOf("system-tags|--json"));
    QCOMPARE(result.code, 0);
    const QList<QJsonObject> tags = objectsOf(result.out);
    QCOMPARE(tags.size(), 43);
    const QStringList lines = result.out.split(QLatin1Char('\n'));
    QCOMPARE(lines.at(0), QStringLiteral("{\"id\":20010,\"name\":\"S>Current_screen_name\",\"dataType\":\"Ascii\","
                                         "\"kind\":\"information\"}"));
    QCOMPARE(lines.at(1), QStringLiteral("{\"id\":20011,\"name\":\"S>Change_screen\",\"dataType\":\"INT(32)\","
                                         "\"kind\":\"control\"}"));
    QCOMPARE(run(argumentsOf("system-tags")).out.section(QLatin1Char('\n'), 0, 1),
             QStringLiteral("id     name                                data type  kind\n"
                            "20010  S>Current_screen_name               Ascii      information"));
}

void TestProjectTool::sampleProject()
{
    copyToolWithDrivers(QStringLiteral(ZELMAR_LABEL_TOOL), path("shipped"));
    QFile::remove(path("sample.db"));
    const Result made = run(argumentsOf("sample-project|sample.db"), QByteArray(), path("shipped"));
    QCOMPARE(made.err, QString());
    QCOMPARE(made.code, 0);

    const Result listed = run(argumentsOf("tags|sample.db|--json"), QByteArray(), path("shipped"));
    QCOMPARE(listed.err, QString());
    QCOMPARE(listed.code, 0);
    QSet<QString> types;
    QSet<QString> drivers;
    QSet<int> disabled;
    const QList<QJsonObject> tags = objectsOf(listed.out);
    for (const QJsonObject &tag : tags) {
        types.insert(tag.value(QStringLiteral("dataType")).toString());
        drivers.insert(tag.value(QStringLiteral("driver")).toString());
        if (tag.value(QStringLiteral("linkEnabled")) == QJsonValue(false))
            disabled.insert(tag.value(QStringLiteral("link")).toInt());
        // One of each kind.
        if (tag.value(QStringLiteral("link")).toInt() == 0 ||
            !tag.value(QStringLiteral("name")).toString().endsWith(QLatin1String("_1")))
            continue;
        const Result commands =
            run({QStringLiteral("commands"), QStringLiteral("sample.db"), tag.value(QStringLiteral("name")).toString()},
                QByteArray(), path("shipped"));
        QCOMPARE(commands.err, QString());
        QCOMPARE(commands.out.section(QLatin1Char(' '), 0, 0), tag.value(QStringLiteral("address")).toString());
    }
    QCOMPARE(tags.size(), 200);
    QCOMPARE(types.size(), 12);
    // The internal tags have none.
    QCOMPARE(drivers.size(), 5);
    QCOMPARE(disabled, QSet<int>({4}));
    QCOMPARE(rows(QStringLiteral("sample.db"), QStringLiteral("SELECT count(*) FROM NODE")),
             QStringList(QStringLiteral("6")));
}

void TestProjectTool::sampleProjectOverwritesNothing()
{
    const QByteArray before = contentOf(path("project.db"));
    const Result result = run(argumentsOf("sample-project|project.db"));
    QCOMPARE(result.err, QStringLiteral("zelmar-label: project.db already exists; it is not changed\n"));
    QCOMPARE(result.code, 3);
    QCOMPARE(contentOf(path("project.db")), before);

    // The drivers of the sample are not among the test's own.
    QFile::remove(path("failed.db"));
    QCOMPARE(run(argumentsOf("sample-project|failed.db")).code, 3);
    QVERIFY(!QFile::exists(path("failed.db")));
}

QTEST_GUILESS_MAIN(TestProjectTool)

#include "tst_projecttool.moc"
