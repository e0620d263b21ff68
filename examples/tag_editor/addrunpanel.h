// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_ADDRUNPANEL_H
#define TAG_EDITOR_ADDRUNPANEL_H

#include "sidepanel.h"
#include "tagrun.h"

QT_BEGIN_NAMESPACE
class QFormLayout;
class QLabel;
class QLineEdit;
class QSpinBox;
class QTableWidget;
QT_END_NAMESPACE

class ProjectSession;
class TargetFields;

/// The form for a run of tags. Shows a preview of the tags while the user types.
class AddRunPanel : public SidePanel
{
    Q_OBJECT

public:
    explicit AddRunPanel(ProjectSession &session, QWidget *parent = nullptr);

    /// Starts a new run on the link.
    void start(int link);

    RunSettings settings() const;

Q_SIGNALS:
    void wanted(const RunSettings &settings);

private:
    QSpinBox *addSpin(QFormLayout *form, const QString &title, const char *name, int least, int most, int value);
    void orderTabs();
    void targetChanged();
    void preview();
    void showTags(const TagRun &run, int total);

    ProjectSession &m_session;
    QLineEdit *m_prefix;
    QLineEdit *m_suffix;
    QSpinBox *m_digits;
    QSpinBox *m_start;
    QSpinBox *m_increment;
    QSpinBox *m_total;
    TargetFields *m_target;
    QTableWidget *m_preview;
    QLabel *m_verdict;
    QPushButton *m_add;
    /// The increment follows type and address until the user sets one.
    bool m_hasOwnIncrement = false;
};

#endif
