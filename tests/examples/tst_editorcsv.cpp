// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "examples/editorfixtures.h"

#include "csvjobs.h"
#include "tagmodel.h"
#include "tagtypes.h"

#include <zelmar_label/label_store/labelstore.h>
#include <zelmar_label/tag_store/tagsystem.h>

#include <QSignalSpy>
#include <QTableWidget>

/// The editor's CSV files: imports and exports with progress, refusals, and a way to stop.
class TestEditorCsv : public QObject, private EditorFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init() { begin(); }
    void cleanup() { end(); }

    void importAddsAndChanges();
    void importRefusals_data();
    void importRefusals();
    void importCanBeCancelled();
    void exportComesBackUnchanged();
    void exportCanBeCancelled();
    void exportToNowhere();
    void oneJobAtATime();
    void closingDuringAJob();
};

namespace {

const char *const header = "name,link,data type,address,scale\n";

QList<TagRow> someTags()
{
    return {tagRow("Valve", 1, tagtype::Bit, "X7"), tagRow("Speed", 1, tagtype::Int16, "D100"),
            tagRow("Title", 1, tagtype::Ascii, "R0", 8)};
}

QByteArray manyRows(int count)
{
    QByteArray content = header;
    for (int number = 0; number < count; ++number)
        content += QStringLiteral("Many_%1,1,INT(16),D%2,1\n").arg(number).arg(number % 8000).toUtf8();
    return content;
}

} // namespace

void TestEditorCsv::initTestCase()
{
    copyDrivers();
}

void TestEditorCsv::cleanupTestCase()
{
    TagSystem::drop();
    label::freeLabels();
}

void TestEditorCsv::importAddsAndChanges()
{
    open(someTags());
    writeFile(path("in.csv"), QByteArray(header) + "Speed,1,INT(16),2-D100,1\n\"Lamp, red\",1,Bit,Y1,1\n"
                                                   "Valve,1,Bit,X7,1\nInner,0,DOUBLE,,1\n");
    m_window->importFrom(path("in.csv"));
    waitForJob();
    QCOMPARE(messageOf(*m_window), QStringLiteral("Import of in.csv: 2 added, 1 changed, 1 unchanged."));
    QCOMPARE(rows(), (QStringList{QStringLiteral("Valve|1|0|X7|1"), QStringLiteral("Speed|1|3|2-D100|1"),
                                  QStringLiteral("Title|1|8|R0|8"), QStringLiteral("Lamp, red|1|0|Y1|1"),
                                  QStringLiteral("Inner|0|9||1")}));
    QCOMPARE(m_window->findChild<TagModel *>()->rowCount(), 5);
}

void TestEditorCsv::importRefusals_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("report");
    const QByteArray first(header);
    QTest::newRow("empty file") << QByteArray() << "%1, line 1: the line of column names is missing."
                                << "";
    QTest::newRow("unknown column") << QByteArray("name,colour\n") << "%1, line 1: there is no column \"colour\"."
                                    << "";
    QTest::newRow("open quote") << first + "\"A,1,3,D1,1\n"
                                << "%1, line 2: a quote is opened and not closed."
                                << "";
    QTest::newRow("wrong address behind a good row") << first + "Good,1,INT(16),D1,1\nBad,1,INT(16),9-D1,1\n"
                                                     << "1 line is refused; nothing is imported."
                                                     << "3|Bad|link 1 has no station 9";
    QTest::newRow("several lines") << first + "A,1,NONE,D1,1\nB,x,INT(16),D1,1\nS>C,0,Bit,,1\n"
                                   << "3 lines are refused; nothing is imported."
                                   << "2|A|there is no data type \"NONE\",3|B|the link \"x\" is not a whole number,"
                                      "4|S>C|names that begin with \"S>\" are reserved for system tags";
}

void TestEditorCsv::importRefusals()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    QFETCH(QString, report);
    open(someTags());
    const QStringList before = rows();
    writeFile(path("in.csv"), content);
    m_window->importFrom(path("in.csv"));
    waitForJob();
    QCOMPARE(messageOf(*m_window), message.contains(QLatin1String("%1")) ? message.arg(path("in.csv")) : message);
    const auto *const table = child<QTableWidget>("importReport");
    QCOMPARE(table->isVisible(), !report.isEmpty());
    QStringList lines;
    for (int row = 0; row < table->rowCount(); ++row)
        lines.append(table->item(row, 0)->text() + QLatin1Char('|') + table->item(row, 1)->text() + QLatin1Char('|') +
                     table->item(row, 2)->text());
    QCOMPARE(lines.join(QLatin1Char(',')), report);
    QCOMPARE(rows(), before);
}

void TestEditorCsv::importCanBeCancelled()
{
    open(someTags());
    const QStringList before = rows();
    writeFile(path("in.csv"), manyRows(3000));
    ImportJob job(m_window->session(), path("in.csv"));
    int furthest = 0;
    connect(&job, &LongJob::progress, this, [&job, &furthest](int done, int) {
        furthest = done;
        // All rows are read, and some are written.
        if (done > 3000)
            job.cancel();
    });
    QSignalSpy finished(&job, &LongJob::finished);
    job.start();
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, longestWait);
    QVERIFY(furthest > 3000 && furthest < 6000);
    QCOMPARE(finished.at(0).at(0).toString(), QString());
    QCOMPARE(finished.at(0).at(1).toString(), QStringLiteral("Import of in.csv: cancelled, nothing is changed."));
    QCOMPARE(rows(), before);
    QCOMPARE(m_window->session().tags().getTagNames().size(), 3);
}

void TestEditorCsv::exportComesBackUnchanged()
{
    open(someTags());
    m_window->exportTo(path("out.csv"));
    waitForJob();
    QCOMPARE(messageOf(*m_window), QStringLiteral("Export to out.csv: 3 tags."));
    QCOMPARE(contentOf(path("out.csv")),
             QByteArray("\"name\",\"link\",\"data type\",\"address\",\"scale\"\n\"Valve\",\"1\",\"Bit\",\"X7\",\"1\"\n"
                        "\"Speed\",\"1\",\"INT(16)\",\"D100\",\"1\"\n\"Title\",\"1\",\"Ascii\",\"R0\",\"8\"\n"));
    m_window->importFrom(path("out.csv"));
    waitForJob();
    QCOMPARE(messageOf(*m_window), QStringLiteral("Import of out.csv: 0 added, 0 changed, 3 unchanged."));
}

void TestEditorCsv::exportCanBeCancelled()
{
    open(someTags());
    writeFile(path("in.csv"), manyRows(2000));
    m_window->importFrom(path("in.csv"));
    waitForJob();
    writeFile(path("out.csv"), "what was there");
    ExportJob job(m_window->session(), path("out.csv"));
    connect(&job, &LongJob::progress, this, [&job](int done, int) {
        if (done > 0)
            job.cancel();
    });
    QSignalSpy finished(&job, &LongJob::finished);
    job.start();
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, longestWait);
    QCOMPARE(contentOf(path("out.csv")), QByteArray("what was there"));
}

void TestEditorCsv::exportToNowhere()
{
    open(someTags());
    m_window->exportTo(path("no/such/folder/out.csv"));
    waitForJob();
    QVERIFY2(messageOf(*m_window).startsWith(path("no/such/folder/out.csv") + QStringLiteral(" cannot be written")),
             qPrintable(messageOf(*m_window)));
    m_window->importFrom(path("missing.csv"));
    waitForJob();
    QVERIFY(messageOf(*m_window).startsWith(path("missing.csv") + QStringLiteral(" cannot be read")));
}

void TestEditorCsv::oneJobAtATime()
{
    open(someTags());
    writeFile(path("in.csv"), manyRows(2000));
    m_window->importFrom(path("in.csv"));
    QVERIFY(m_window->isBusy());
    m_window->exportTo(path("out.csv"));
    QCOMPARE(messageOf(*m_window), QStringLiteral("Import of in.csv is still running; Escape stops it."));
    QVERIFY(!m_window->openProject(path("plant.db")));
    const auto *const model = m_window->findChild<TagModel *>();
    QVERIFY(!(model->flags(model->index(0, TagModel::Name)) & Qt::ItemIsEditable));
    waitForProgress();
    QVERIFY(m_window->isBusy());
    ProjectSession &session = m_window->session();
    const QString refusal = QStringLiteral("Tags are being written; try again later.");
    QCOMPARE(session.add(QStringLiteral("New"), 0, tagtype::Bit, QString(), 1), refusal);
    QCOMPARE(session.rename(1, QStringLiteral("New")), refusal);
    QCOMPARE(session.change(1, QStringLiteral("X1"), tagtype::Bit, 1), refusal);
    waitForJob();
    QVERIFY(!QFile::exists(path("out.csv")));
    QCOMPARE(rows().size(), 2003);
    QVERIFY(model->flags(model->index(0, TagModel::Name)) & Qt::ItemIsEditable);
}

void TestEditorCsv::closingDuringAJob()
{
    open(someTags());
    const QStringList before = rows();
    writeFile(path("in.csv"), manyRows(3000));
    m_window->importFrom(path("in.csv"));
    waitForProgress();
    QVERIFY(m_window->isBusy());
    m_window.reset();
    QCOMPARE(rows(), before);
}

QTEST_MAIN(TestEditorCsv)

#include "tst_editorcsv.moc"
