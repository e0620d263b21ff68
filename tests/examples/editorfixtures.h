// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_EDITORFIXTURES_H
#define ZELMAR_LABEL_TESTS_EDITORFIXTURES_H

#include "mainwindow.h"

#include "support/projectfixtures.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QScopedPointer>
#include <QTemporaryDir>
#include <QTest>

/// Puts the shipped drivers beside the test program.
inline void copyDrivers()
{
    const QDir here(QCoreApplication::applicationDirPath());
    const QDir built(QStringLiteral(ZELMAR_LABEL_DRIVERS_RUNTIME));
    if (!here.mkpath(QStringLiteral("database")) || !here.mkpath(QStringLiteral("scripts")))
        qFatal("no folders for the drivers");
    const auto copy = [&](const QString &name) {
        QFile::remove(here.filePath(name));
        if (!QFile::copy(built.filePath(name), here.filePath(name)))
            qFatal("cannot copy %s", qPrintable(name));
    };
    copy(QStringLiteral("database/drivers"));
    const QStringList scripts = QDir(built.filePath(QStringLiteral("scripts"))).entryList(QDir::Files);
    for (const QString &script : scripts)
        copy(QStringLiteral("scripts/") + script);
}

/// Writes a project of one device, link 1 with the stations 1 and 2, and closes it again.
inline void writeProject(const QString &path, const QList<TagRow> &tags)
{
    const QString key = QStringLiteral("made");
    makeProject(path, key,
                {{1, QStringLiteral("FX5U Ethernet"), 1},
                 {2, QStringLiteral("ISO on TCP"), 1},
                 {3, QStringLiteral("No such PLC"), 0}},
                {{1, 1, 1}, {2, 2, 1}, {3, 1, 2}});
    if (!tags.isEmpty())
        writeTags(key, tags);
    closeProject(key);
}

inline TagRow tagRow(const char *name, int link, int type, const char *address, int scale = 1)
{
    TagRow row;
    row.name = QLatin1String(name);
    row.connectorId = link;
    row.dataType = type;
    row.address = QLatin1String(address);
    row.scale = scale;
    return row;
}

/// In milliseconds, for builds that are slow because of their checks.
constexpr int longestWait = 120000;

/// An editor's window, on the screen and active, and a folder for its files.
class EditorFixture
{
protected:
    void begin()
    {
        m_folder.reset(new QTemporaryDir);
        m_window.reset(new MainWindow);
        m_window->show();
        QApplication::setActiveWindow(m_window.data());
        QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    }

    void end()
    {
        m_window.reset();
        m_folder.reset();
    }

    void waitForJob() { QTRY_VERIFY_WITH_TIMEOUT(!m_window->isBusy(), longestWait); }

    /// Waits until a job has done some of its steps, but not all.
    void waitForProgress()
    {
        const auto *const progress = child<QProgressBar>("progress");
        while (m_window->isBusy() && progress->value() <= 0)
            QCoreApplication::processEvents();
    }

    /// Makes a project with the tags, and opens it.
    void open(const QList<TagRow> &tags);

    QString path(const char *name) const { return m_folder->filePath(QLatin1String(name)); }

    template<typename Widget>
    Widget *child(const char *name) const
    {
        return m_window->findChild<Widget *>(QLatin1String(name));
    }
    QString label(const char *name) const { return child<QLabel>(name)->text(); }

    /// The tag table, read like another program.
    QStringList rows() const
    {
        const QString key = QStringLiteral("reader");
        openProject(path("plant.db"), key);
        const QStringList found = rowsOn(
            key,
            QStringLiteral("SELECT name, connector_id, data_type, address, scale FROM custom_tag_table ORDER BY id"));
        closeProject(key);
        return found;
    }

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<MainWindow> m_window;
};

inline QString messageOf(const MainWindow &window)
{
    const auto *const label = window.findChild<QLabel *>(QStringLiteral("messageText"));
    return label->isVisibleTo(&window) ? label->text() : QString();
}

inline void EditorFixture::open(const QList<TagRow> &tags)
{
    writeProject(path("plant.db"), tags);
    QVERIFY2(m_window->openProject(path("plant.db")), qPrintable(messageOf(*m_window)));
}

inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("not readable");
}

inline void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

#endif
