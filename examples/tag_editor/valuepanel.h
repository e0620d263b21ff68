// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_VALUEPANEL_H
#define TAG_EDITOR_VALUEPANEL_H

#include <QGroupBox>

QT_BEGIN_NAMESPACE
class QFormLayout;
class QLabel;
class QLineEdit;
QT_END_NAMESPACE

class ProjectSession;

/// A tag's value as text, in base 16 and 8, and as bytes. When one is typed, the others are updated.
class ValuePanel : public QGroupBox
{
    Q_OBJECT

public:
    explicit ValuePanel(ProjectSession &session, QWidget *parent = nullptr);

    /// -1 for no tag. The value starts at 0, a text empty.
    void showTag(int id);

private:
    QLineEdit *addEdit(QFormLayout *form, const QString &title, const char *name);
    bool hasBases() const;
    void takeValue(const QString &text);
    void takeBase(const QString &text, int base);
    void takeBytes(const QString &text);
    void showValue(const QVariant &value, const QLineEdit *typed);
    void showProblem(const QString &reason, const QLineEdit *typed);

    ProjectSession &m_session;
    int m_id = -1;
    int m_type = 0;
    QLineEdit *m_value;
    QLineEdit *m_hexadecimal;
    QLineEdit *m_octal;
    QLineEdit *m_bytes;
    QLabel *m_limits;
    QLabel *m_problem;
};

#endif
