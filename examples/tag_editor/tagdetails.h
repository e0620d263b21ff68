// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_TAGDETAILS_H
#define TAG_EDITOR_TAGDETAILS_H

#include <QWidget>

QT_BEGIN_NAMESPACE
class QGroupBox;
class QLabel;
class QListWidget;
class QSpinBox;
QT_END_NAMESPACE

class ProjectSession;
struct AddressVerdict;
struct LinkInfo;
class ValuePanel;

/// Details of a tag on its device: the command that reads it, the blocks of a run from it, and its value.
class TagDetails : public QWidget
{
    Q_OBJECT

public:
    explicit TagDetails(ProjectSession &session, QWidget *parent = nullptr);

    /// -1 for no tag.
    void showTag(int id);
    int tag() const { return m_id; }

Q_SIGNALS:
    /// The user chose a suggested address for the tag.
    void addressWanted(int id, const QString &address);

protected:
    void changeEvent(QEvent *event) override;

private:
    QGroupBox *commandGroup();
    QGroupBox *blockGroup();
    void refresh();
    void showVerdict(const AddressVerdict &verdict);
    void showCommand(const LinkInfo &link, bool isAccepted);
    void showBlocks();
    QString blockProblem(int count) const;

    ProjectSession &m_session;
    int m_id = -1;
    QLabel *m_title;
    QLabel *m_subtitle;
    QLabel *m_problem;
    QLabel *m_suggestions;
    QWidget *m_body;
    QLabel *m_address;
    QLabel *m_format;
    QLabel *m_width;
    QLabel *m_scanTime;
    QSpinBox *m_count;
    QListWidget *m_blocks;
    QLabel *m_blockText;
    QGroupBox *m_blockGroup;
    ValuePanel *m_value;
};

#endif
