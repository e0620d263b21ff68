// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_MAINWINDOW_H
#define TAG_EDITOR_MAINWINDOW_H

#include "projectsession.h"

#include <QMainWindow>

QT_BEGIN_NAMESPACE
class QLabel;
class QLineEdit;
class QProgressBar;
class QSplitter;
class QStackedWidget;
class QToolButton;
QT_END_NAMESPACE

class AddRunPanel;
class AddTagForm;
class ImportReport;
class LinkTree;
class LongJob;
class MessageBar;
class ShortcutsPanel;
class TagDetails;
class TagModel;
class TagTable;

/// The editor: links on the left, their tags in the middle, details of the selected tag on the right.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /// False, with the reason in the message bar, if the project cannot be opened; the previous one stays open.
    bool openProject(const QString &path);
    /// Opens the sample project, and makes it first if the file does not exist.
    bool openSample(const QString &path = ProjectSession::samplePath());

    void importFrom(const QString &path);
    void exportTo(const QString &path);

    /// True while tags are imported, exported or added.
    bool isBusy() const { return m_job != nullptr; }

    ProjectSession &session() { return m_session; }

    void showDetails();
    void showAddTag();
    void showAddRun();
    void showShortcuts();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void buildPanes();
    void buildStatusBar();
    QWidget *searchPane();
    QWidget *sidePane();
    void buildActions();
    QAction *addCommand(const QString &text, const QString &tip, const QKeySequence &keys, const char *name,
                        void (MainWindow::*slot)());
    void wire();

    void chooseProject();
    void chooseSample();
    void chooseImport();
    void chooseExport();
    void renameTag();
    void editAddress();
    void focusSearch();
    void focusLinks();
    void focusTable();
    void focusDetails();
    void nextWrongAddress();
    void showWrong(int id);

    bool report(const QString &problem);
    bool isReady();
    bool mayEdit();
    void start(LongJob *job);
    void setProgressVisible(bool isVisible);
    void finish(const QString &problem, const QString &result);
    void showReport();
    void escape();
    void projectOpened();
    void scopeChanged();
    void showCounts();
    bool isInPanel() const;
    void closePanel();
    int linkForNewTags() const;
    void takeSuggestion(int id, const QString &address);

    ProjectSession m_session;
    TagModel *m_model;
    MessageBar *m_messages;
    QSplitter *m_panes;
    LinkTree *m_links;
    QLineEdit *m_search;
    QLabel *m_searchCount;
    TagTable *m_table;
    QStackedWidget *m_side;
    TagDetails *m_details;
    AddTagForm *m_addTag;
    AddRunPanel *m_addRun;
    ImportReport *m_report;
    ShortcutsPanel *m_shortcuts;
    QList<QAction *> m_commands;
    QLabel *m_status;
    QLabel *m_jobTitle;
    QProgressBar *m_progress;
    QToolButton *m_cancel;
    LongJob *m_job = nullptr;
};

#endif
