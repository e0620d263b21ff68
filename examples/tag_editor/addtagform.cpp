// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "addtagform.h"

#include "look.h"
#include "projectsession.h"
#include "targetfields.h"

#include <zelmar_label/tag_store/tagsystem.h>

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

AddTagForm::AddTagForm(ProjectSession &session, QWidget *parent)
    : SidePanel(tr("Add a tag"), tr("Close"), parent)
    , m_session(session)
    , m_name(new QLineEdit(this))
    , m_verdict(new QLabel(this))
{
    setObjectName(QStringLiteral("addTagForm"));
    auto *const form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    body()->addLayout(form);
    m_name->setObjectName(QStringLiteral("newTagName"));
    m_name->setPlaceholderText(tr("Name of the tag"));
    form->addRow(tr("&Name"), m_name);
    m_target = new TargetFields(session, tr("A&ddress"), form);
    m_verdict->setObjectName(QStringLiteral("newTagVerdict"));
    m_verdict->setWordWrap(true);
    body()->addWidget(m_verdict);
    body()->addStretch();
    m_add = addAcceptButton(tr("Add tag"), "newTagAdd");
    connect(m_name, &QLineEdit::textChanged, this, &AddTagForm::judge);
    connect(m_target, &TargetFields::changed, this, &AddTagForm::judge);
    connect(m_target, &TargetFields::pickerReplaced, this, &AddTagForm::orderTabs);
    connect(this, &SidePanel::accepted, this, &AddTagForm::add);
    connect(&session, &ProjectSession::tagsAdded, this, &AddTagForm::judge);
    orderTabs();
    judge();
}

void AddTagForm::orderTabs()
{
    setTabStops(QList<QWidget *>{m_name} + m_target->tabStops());
}

void AddTagForm::start(int link)
{
    m_target->setLink(link);
    m_name->setFocus();
    m_name->selectAll();
    judge();
}

void AddTagForm::judge()
{
    m_add->setEnabled(false);
    look::setTone(m_verdict, look::Tone::Faded);
    if (!m_session.isOpen())
        return;
    if (m_name->text().isEmpty()) {
        m_verdict->setText(tr("Type a name."));
        return;
    }
    QString problem = m_session.refusalToWrite();
    if (problem.isEmpty())
        problem = m_session.nameProblem(m_name->text());
    const bool isUntouched = problem.isEmpty() && m_target->hasAddress() && m_target->address().isEmpty();
    const AddressVerdict verdict =
        m_session.judge().judge(m_target->link(), m_target->dataType(), m_target->address(), m_target->scale());
    if (problem.isEmpty() && !verdict.isAccepted())
        problem = isUntouched ? tr("Type an address.") : tr("The address is not valid: %1.").arg(verdict.reason);
    if (!problem.isEmpty() && !verdict.suggestions.isEmpty())
        problem += tr(" Nearest: %1").arg(verdict.suggestions.join(QStringLiteral(", ")));
    m_verdict->setText(problem.isEmpty() ? tr("Enter adds the tag.") : look::narrow(problem));
    if (!problem.isEmpty() && !isUntouched)
        look::setTone(m_verdict, look::Tone::Wrong);
    m_add->setEnabled(problem.isEmpty());
}

void AddTagForm::add()
{
    const QString name = m_name->text();
    const QString reason =
        m_session.add(name, m_target->link(), m_target->dataType(), m_target->address(), m_target->scale());
    if (reason.isEmpty()) {
        Q_EMIT added(name);
        m_name->setFocus();
        m_name->selectAll();
        m_verdict->setText(look::narrow(tr("\"%1\" is added. Type the next name, or press Escape.").arg(name)));
        look::setTone(m_verdict, look::Tone::Good);
        m_add->setEnabled(false);
        return;
    }
    m_verdict->setText(look::narrow(reason));
    look::setTone(m_verdict, look::Tone::Wrong);
}
