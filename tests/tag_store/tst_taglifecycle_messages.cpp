// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/lifecycletest.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QSqlDatabase>
#include <QTimer>
#include <QTranslator>
#include <QtTest>

namespace {

/// Records the message box of the next operation, and presses its button.
class BoxReader : public QObject
{
public:
    BoxReader()
    {
        m_timer.setInterval(5);
        connect(&m_timer, &QTimer::timeout, this, &BoxReader::read);
        m_timer.start();
    }

    /// The message boxes: icon, title, text, number of buttons.
    QStringList boxes;
    bool hadParent = false;
    bool isModal = true;
    bool hasOnlyOk = true;

private:
    void read()
    {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        const QString icon = box->icon() == QMessageBox::Critical  ? QStringLiteral("critical")
                             : box->icon() == QMessageBox::Warning ? QStringLiteral("warning")
                                                                   : QStringLiteral("other");
        boxes.append(icon + QLatin1Char('|') + box->windowTitle() + QLatin1Char('|') + box->text());
        hadParent = hadParent || box->parentWidget();
        isModal = isModal && box->isModal();
        hasOnlyOk = hasOnlyOk && box->standardButtons() == QMessageBox::Ok && box->buttons().size() == 1;
        box->button(QMessageBox::Ok)->click();
    }

    QTimer m_timer;
};

/// Puts the context before every translated text.
class ContextTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        if (qstrcmp(context, "TagSystem") != 0)
            return QString();
        return QStringLiteral("TagSystem: ") + QString::fromUtf8(text);
    }
};

} // namespace

/// Tests the library's message boxes for failures.
class TagMessagesTest : public LifecycleTest
{
    Q_OBJECT

private Q_SLOTS:
    void messagesAreBoxes_data();
    void messagesAreBoxes();
    void messagesAreTranslated();
};

void TagMessagesTest::messagesAreBoxes_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("no current project") << "instance" << QStringList{noProject};
    QTest::newRow("no such connection") << "init" << QStringList{noConnection};
    QTest::newRow("a connection that does not open") << "open" << QStringList{notOpened};
    QTest::newRow("no open database for the table") << "table" << QStringList{noOpenDatabase};
    QTest::newRow("a stand-alone file that cannot be made")
        << "stand-alone" << QStringList{fileNotMade, noOpenDatabase, standAloneNotOpened};
}

void TagMessagesTest::messagesAreBoxes()
{
    QFETCH(QString, operation);
    QFETCH(QStringList, expected);
    m_messages.reset();
    TagSystem tags(nullptr);
    QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), otherKey).setDatabaseName(m_folder->path());
    BoxReader reader;
    if (operation == QLatin1String("instance"))
        QCOMPARE(TagSystem::instance(), static_cast<TagSystem *>(nullptr));
    else if (operation == QLatin1String("init"))
        QVERIFY(!tags.init(key));
    else if (operation == QLatin1String("open"))
        QVERIFY(tags.init(otherKey));
    else if (operation == QLatin1String("table"))
        tags.createCustomTable();
    else
        QVERIFY(!tags.createDatabaseConnection(QStringLiteral("missing/tags")));
    QCOMPARE(reader.boxes, expected);
    QVERIFY(!reader.hadParent);
    QVERIFY2(reader.isModal, "a box blocks");
    QVERIFY(reader.hasOnlyOk);
}

void TagMessagesTest::messagesAreTranslated()
{
    ContextTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    TagSystem tags(nullptr);
    TagSystem::instance();
    tags.init(key);
    tags.createCustomTable();
    tags.createDatabaseConnection(QStringLiteral("missing/tags"));
    QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), otherKey).setDatabaseName(m_folder->path());
    tags.init(otherKey);
    QCoreApplication::removeTranslator(&translator);
    QStringList expected{noProject,      noConnection,        noOpenDatabase, fileNotMade,
                         noOpenDatabase, standAloneNotOpened, notOpened};
    for (QString &message : expected)
        message.replace(QLatin1Char('|'), QStringLiteral("|TagSystem: "));
    QCOMPARE(m_messages->take(), expected);
}

QTEST_MAIN(TagMessagesTest)

#include "tst_taglifecycle_messages.moc"
