// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "addrunpanel.h"

#include "counts.h"
#include "look.h"
#include "projectsession.h"
#include "targetfields.h"

#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

constexpr int mostTags = 65535;
/// Enough to show the run, and few enough for every key stroke.
constexpr int previewedTags = 100;

} // namespace

AddRunPanel::AddRunPanel(ProjectSession &session, QWidget *parent)
    : SidePanel(tr("Add a run of tags"), tr("Close"), parent)
    , m_session(session)
    , m_prefix(new QLineEdit(QStringLiteral("Tag_"), this))
    , m_suffix(new QLineEdit(this))
    , m_preview(new QTableWidget(0, 2, this))
    , m_verdict(new QLabel(this))
{
    setObjectName(QStringLiteral("addRunPanel"));
    auto *const form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    body()->addLayout(form);
    m_prefix->setObjectName(QStringLiteral("runPrefix"));
    m_prefix->setPlaceholderText(tr("Before the number"));
    m_suffix->setObjectName(QStringLiteral("runSuffix"));
    m_suffix->setPlaceholderText(tr("After the number"));
    form->addRow(tr("&Prefix"), m_prefix);
    form->addRow(tr("&Suffix"), m_suffix);
    m_digits = addSpin(form, tr("&Digits"), "runDigits", 1, 9, 2);
    m_start = addSpin(form, tr("Start &at"), "runStart", 0, 999999, 1);
    m_target = new TargetFields(session, tr("&First address"), form);
    m_increment = addSpin(form, tr("Add&ress increment"), "runIncrement", 1, 9999, 1);
    m_total = addSpin(form, tr("Total ta&gs"), "runTotal", 1, mostTags, 16);

    m_preview->setObjectName(QStringLiteral("runPreview"));
    m_preview->setHorizontalHeaderLabels({tr("Name"), tr("Address")});
    m_preview->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_preview->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_preview->verticalHeader()->hide();
    m_preview->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    m_preview->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_preview->setSelectionMode(QAbstractItemView::NoSelection);
    m_preview->setFocusPolicy(Qt::NoFocus);
    m_preview->setShowGrid(false);
    look::setLeftOverHeight(m_preview, 6);
    body()->addWidget(m_preview, 1);
    m_verdict->setObjectName(QStringLiteral("runVerdict"));
    m_verdict->setWordWrap(true);
    body()->addWidget(m_verdict);
    m_add = addAcceptButton(tr("Add tags"), "runAdd");

    connect(m_prefix, &QLineEdit::textChanged, this, &AddRunPanel::preview);
    connect(m_suffix, &QLineEdit::textChanged, this, &AddRunPanel::preview);
    connect(m_increment, QOverload<int>::of(&QSpinBox::valueChanged), this, [this] { m_hasOwnIncrement = true; });
    connect(m_target, &TargetFields::changed, this, &AddRunPanel::targetChanged);
    connect(m_target, &TargetFields::pickerReplaced, this, &AddRunPanel::orderTabs);
    connect(this, &SidePanel::accepted, this, [this] { Q_EMIT wanted(settings()); });
    connect(&session, &ProjectSession::tagsAdded, this, &AddRunPanel::preview);
    targetChanged();
    orderTabs();
}

void AddRunPanel::orderTabs()
{
    setTabStops(QList<QWidget *>{m_prefix, m_suffix, m_digits, m_start} + m_target->tabStops() +
                QList<QWidget *>{m_increment, m_total});
}

QSpinBox *AddRunPanel::addSpin(QFormLayout *form, const QString &title, const char *name, int least, int most,
                               int value)
{
    auto *const spin = new QSpinBox(this);
    spin->setObjectName(QLatin1String(name));
    spin->setRange(least, most);
    spin->setValue(value);
    spin->setAccelerated(true);
    form->addRow(title, spin);
    connect(spin, QOverload<int>::of(&QSpinBox::valueChanged), this, &AddRunPanel::preview);
    return spin;
}

void AddRunPanel::start(int link)
{
    m_hasOwnIncrement = false;
    m_target->setLink(link);
    m_prefix->setFocus();
    m_prefix->selectAll();
    targetChanged();
}

RunSettings AddRunPanel::settings() const
{
    RunSettings settings;
    settings.link = m_target->link();
    settings.dataType = m_target->dataType();
    settings.scale = m_target->scale();
    settings.prefix = m_prefix->text();
    settings.suffix = m_suffix->text();
    settings.digits = m_digits->value();
    settings.start = m_start->value();
    settings.firstAddress = m_target->address();
    settings.increment = m_increment->value();
    settings.total = m_total->value();
    return settings;
}

void AddRunPanel::targetChanged()
{
    m_increment->setEnabled(m_target->link() != 0);
    if (!m_hasOwnIncrement && m_session.isOpen()) {
        const QSignalBlocker blocker(m_increment);
        m_increment->setValue(naturalIncrement(m_session, settings()));
    }
    preview();
}

void AddRunPanel::preview()
{
    m_add->setEnabled(false);
    if (!m_session.isOpen())
        return;
    const RunSettings wantedRun = settings();
    const TagRun run = planRun(m_session, wantedRun, qMin(wantedRun.total, previewedTags));
    showTags(run, wantedRun.total);
    const QString refusal = m_session.refusalToWrite();
    QString problem = refusal.isEmpty() ? run.problem : refusal;
    if (problem.isEmpty() && wantedRun.total > previewedTags)
        problem = problemAtEnd(m_session, wantedRun);
    m_verdict->setText(problem.isEmpty() ? counted(wantedRun.total, tr("Enter adds 1 tag."), tr("Enter adds %1 tags."))
                                         : look::narrow(problem));
    const bool isUntouched = refusal.isEmpty() && m_target->hasAddress() && wantedRun.firstAddress.isEmpty();
    look::setTone(m_verdict, problem.isEmpty() || isUntouched ? look::Tone::Faded : look::Tone::Wrong);
    m_add->setText(counted(wantedRun.total, tr("Add 1 tag"), tr("Add %1 tags")));
    m_add->setEnabled(problem.isEmpty());
}

void AddRunPanel::showTags(const TagRun &run, int total)
{
    const QFont fixed = look::monospace(font());
    const bool isCut = total > run.names.size();
    m_preview->setRowCount(run.names.size() + (isCut ? 1 : 0));
    for (int row = 0; row < run.names.size(); ++row) {
        auto *const address = new QTableWidgetItem(run.addresses.value(row));
        address->setFont(fixed);
        m_preview->setItem(row, 0, new QTableWidgetItem(run.names.at(row)));
        m_preview->setItem(row, 1, address);
    }
    if (!isCut)
        return;
    auto *const more = new QTableWidgetItem(tr("… and %1 more").arg(total - run.names.size()));
    more->setFlags(Qt::NoItemFlags);
    m_preview->setItem(run.names.size(), 0, more);
    m_preview->setItem(run.names.size(), 1, new QTableWidgetItem);
}
