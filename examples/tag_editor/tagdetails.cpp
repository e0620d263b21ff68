// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "tagdetails.h"

#include "counts.h"
#include "look.h"
#include "projectsession.h"
#include "tagcsv.h"
#include "valuepanel.h"

#include <zelmar_label/label_table/labelinterface.h>
#include <zelmar_label/tag_store/tagsystem.h>

#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

constexpr int mostItems = 65535;
/// On some devices a run of single bits has one block for each bit.
constexpr int mostShownBlocks = 500;

QLabel *textLabel(const char *name, QWidget *parent)
{
    auto *const label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QString widthText(int dataType)
{
    switch (dataType) {
    case CommunicatorCommand::Bit:
        return TagDetails::tr("one bit");
    case CommunicatorCommand::Byte:
        return TagDetails::tr("one byte");
    case CommunicatorCommand::Word:
        return TagDetails::tr("a word, 2 bytes");
    case CommunicatorCommand::DoubleWord:
        return TagDetails::tr("a double word, 4 bytes");
    case CommunicatorCommand::QuadWord:
        return TagDetails::tr("a quad word, 8 bytes");
    default:
        return TagDetails::tr("type %1").arg(dataType);
    }
}

} // namespace

TagDetails::TagDetails(ProjectSession &session, QWidget *parent)
    : QWidget(parent)
    , m_session(session)
    , m_title(textLabel("detailsTitle", this))
    , m_subtitle(textLabel("detailsSubtitle", this))
    , m_problem(textLabel("detailsProblem", this))
    , m_suggestions(textLabel("detailsSuggestions", this))
    , m_body(new QWidget(this))
    , m_value(new ValuePanel(session, this))
{
    setObjectName(QStringLiteral("tagDetails"));
    QFont bold = font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    m_title->setFont(bold);
    m_title->setTextFormat(Qt::PlainText);
    m_suggestions->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(m_suggestions, &QLabel::linkActivated, this,
            [this](const QString &address) { Q_EMIT addressWanted(m_id, address); });

    auto *const column = new QVBoxLayout(this);
    const int gap = look::gap(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);
    for (QWidget *const widget : {m_title, m_subtitle, m_problem, m_suggestions})
        column->addWidget(widget);
    auto *const groups = new QVBoxLayout(m_body);
    groups->setContentsMargins(0, 0, 0, 0);
    groups->setSpacing(gap);
    QGroupBox *const command = commandGroup();
    for (QGroupBox *const group : {command, static_cast<QGroupBox *>(m_value)})
        group->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    groups->addWidget(command);
    groups->addWidget(m_value);
    groups->addWidget(blockGroup(), 1);
    groups->addStretch();
    column->addWidget(m_body, 1);
    column->addStretch();
    connect(&session, &ProjectSession::tagChanged, this, [this](int id) {
        if (id == m_id)
            refresh();
    });
    showTag(-1);
}

QGroupBox *TagDetails::commandGroup()
{
    auto *const group = new QGroupBox(tr("Command"), m_body);
    auto *const form = new QFormLayout(group);
    m_address = textLabel("commandAddress", group);
    m_address->setFont(look::monospace(font()));
    m_width = textLabel("commandWidth", group);
    m_scanTime = textLabel("commandScanTime", group);
    m_format = textLabel("commandFormat", group);
    form->addRow(tr("Address"), m_address);
    form->addRow(tr("Reads"), m_width);
    form->addRow(tr("Scan time"), m_scanTime);
    form->addRow(tr("Format"), m_format);
    look::alignToFirstLine(form, m_format);
    return group;
}

QGroupBox *TagDetails::blockGroup()
{
    m_blockGroup = new QGroupBox(tr("Blocks"), m_body);
    m_count = new QSpinBox(m_blockGroup);
    m_count->setObjectName(QStringLiteral("blockCount"));
    m_count->setRange(1, mostItems);
    m_count->setValue(16);
    m_count->setAccelerated(true);
    m_blockText = textLabel("blockText", m_blockGroup);
    m_blocks = new QListWidget(m_blockGroup);
    m_blocks->setObjectName(QStringLiteral("blockList"));
    m_blocks->setUniformItemSizes(true);
    m_blocks->setFont(look::monospace(font()));
    look::setLeftOverHeight(m_blocks, 4);
    auto *const column = new QVBoxLayout(m_blockGroup);
    auto *const form = new QFormLayout;
    form->addRow(tr("&Items from here"), m_count);
    column->addLayout(form);
    column->addWidget(m_blockText);
    column->addWidget(m_blocks, 1);
    connect(m_count, QOverload<int>::of(&QSpinBox::valueChanged), this, &TagDetails::showBlocks);
    return m_blockGroup;
}

void TagDetails::showTag(int id)
{
    m_id = m_session.isOpen() && m_session.tags().isValidTagID(id) ? id : -1;
    refresh();
}

void TagDetails::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    // The text contains the colour of the links.
    if (event->type() == QEvent::PaletteChange && m_session.isOpen() && m_id >= 0)
        showVerdict(m_session.verdict(m_id, m_session.tag(m_id)));
}

void TagDetails::refresh()
{
    m_body->setVisible(m_id >= 0);
    m_problem->hide();
    m_suggestions->hide();
    m_value->showTag(m_id);
    look::setTone(m_subtitle, look::Tone::Faded);
    if (m_id < 0) {
        m_title->setText(tr("No tag is selected"));
        m_subtitle->setText(tr("Select a tag to see its command, its blocks and its bytes."));
        return;
    }
    const PlainTag tag = m_session.tag(m_id);
    m_title->setText(look::narrow(tag.name));
    const LinkInfo &link = m_session.judge().link(tag.link);
    m_subtitle->setText(tr("%1 · %2").arg(dataTypeName(m_session.tags(), tag.dataType), link.title()) +
                        (link.driver.isEmpty() ? QString() : tr(" · %1").arg(link.driver)));
    const AddressVerdict verdict = m_session.verdict(m_id, tag);
    showVerdict(verdict);
    // For such a number the library returns another tag's command.
    m_body->setVisible(!m_session.tags().isNotNormalTag(m_id));
    showCommand(link, verdict.isAccepted());
    showBlocks();
}

void TagDetails::showVerdict(const AddressVerdict &verdict)
{
    m_problem->setText(look::narrow(tr("The address is not valid: %1.").arg(verdict.reason)));
    m_problem->setVisible(!verdict.isAccepted());
    look::setTone(m_problem, look::Tone::Wrong);
    QStringList links;
    for (const QString &address : verdict.suggestions)
        links.append(QStringLiteral("<a href=\"%1\" style=\"color:%2\">%1</a>")
                         .arg(address.toHtmlEscaped(), look::link(palette()).name()));
    m_suggestions->setText(tr("Nearest: %1").arg(links.join(QStringLiteral(", "))));
    m_suggestions->setVisible(!links.isEmpty());
}

void TagDetails::showCommand(const LinkInfo &link, bool isAccepted)
{
    bool isCommand = false;
    const CommunicatorCommand command = m_session.tags().getCommunicatorCommandByIndex(m_id, isCommand);
    m_address->setText(command.address.isEmpty() ? tr("none") : look::narrow(command.address));
    m_width->setText(command.dataType == CommunicatorCommand::Text
                         ? counted(command.length, tr("1 byte of text"), tr("%1 bytes of text"))
                         : widthText(command.dataType));
    m_scanTime->setText(QString::number(command.scanTime));
    QString format = link.id == 0 ? tr("internal, no device") : tr("none");
    if (isAccepted && link.label) {
        const int row = link.label->addressValidation(StationAddress(command.address).device, command.dataType);
        format = link.label->getFormatString(row);
    }
    m_format->setText(format);
    m_blockGroup->setVisible(isAccepted && link.label);
}

QString TagDetails::blockProblem(int count) const
{
    const int made = m_session.tags().getContinuousCommand(m_id, count).size();
    if (made < count)
        return tr("Only %1 of %2 items are within the device's limits.").arg(made).arg(count);
    return tr("The driver allows no block with an item of this type.");
}

void TagDetails::showBlocks()
{
    m_blocks->clear();
    // Also hidden if the device has no such address, which would make the library write to the log.
    if (m_id < 0 || m_blockGroup->isHidden())
        return;
    QList<CommunicatorCommand> blocks;
    if (!m_session.tags().creatBlockCommand(m_id, m_count->value(), blocks)) {
        m_blockText->setText(blockProblem(m_count->value()));
        look::setTone(m_blockText, look::Tone::Wrong);
        return;
    }
    look::setTone(m_blockText, look::Tone::Faded);
    m_blockText->setText(blocks.size() > mostShownBlocks
                             ? tr("%1 requests; the first %2:").arg(blocks.size()).arg(mostShownBlocks)
                             : counted(blocks.size(), tr("1 request:"), tr("%1 requests:")));
    for (const CommunicatorCommand &block : blocks.mid(0, mostShownBlocks))
        m_blocks->addItem(tr("%1 × %2").arg(block.address).arg(block.length));
}
