// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "valuepanel.h"

#include "counts.h"
#include "look.h"
#include "projectsession.h"
#include "taglimits.h"
#include "tagtypes.h"
#include "tagvalue.h"

#include <zelmar_label/tag_store/tagsystem.h>

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

namespace {

QString spacedHex(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' ').toUpper());
}

} // namespace

ValuePanel::ValuePanel(ProjectSession &session, QWidget *parent)
    : QGroupBox(tr("Value"), parent)
    , m_session(session)
    , m_limits(new QLabel(this))
    , m_problem(new QLabel(this))
{
    setObjectName(QStringLiteral("valuePanel"));
    auto *const form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_value = addEdit(form, tr("&Value"), "valueEdit");
    m_hexadecimal = addEdit(form, tr("Base &16"), "hexadecimalEdit");
    m_octal = addEdit(form, tr("Base &8"), "octalEdit");
    m_bytes = addEdit(form, tr("B&ytes"), "bytesEdit");
    m_bytes->setPlaceholderText(tr("Hexadecimal, the least significant byte first"));
    m_bytes->setToolTip(m_bytes->placeholderText());
    m_limits->setObjectName(QStringLiteral("limitsLabel"));
    m_limits->setWordWrap(true);
    form->addRow(tr("Limits"), m_limits);
    look::alignToFirstLine(form, m_limits);
    m_problem->setObjectName(QStringLiteral("valueProblem"));
    m_problem->setWordWrap(true);
    form->addRow(m_problem);
    m_problem->hide();
    connect(m_value, &QLineEdit::textEdited, this, &ValuePanel::takeValue);
    connect(m_hexadecimal, &QLineEdit::textEdited, this, [this](const QString &text) { takeBase(text, 16); });
    connect(m_octal, &QLineEdit::textEdited, this, [this](const QString &text) { takeBase(text, 8); });
    connect(m_bytes, &QLineEdit::textEdited, this, &ValuePanel::takeBytes);
}

QLineEdit *ValuePanel::addEdit(QFormLayout *form, const QString &title, const char *name)
{
    auto *const edit = new QLineEdit(this);
    edit->setObjectName(QLatin1String(name));
    edit->setFont(look::monospace(font()));
    form->addRow(title, edit);
    return edit;
}

/// The library shows reals and texts only as they are, not in other bases.
bool ValuePanel::hasBases() const
{
    return !tagtype::isReal(m_type) && m_type != tagtype::Ascii;
}

void ValuePanel::showTag(int id)
{
    m_id = id;
    setEnabled(id >= 0);
    if (id < 0)
        return;
    TagSystem &tags = m_session.tags();
    m_type = tags.getDataTypeByID(id);
    for (QLineEdit *const edit : {m_hexadecimal, m_octal}) {
        // Not hidden: the form would move from tag to tag.
        edit->setEnabled(hasBases());
        edit->setText(tr("–"));
        // The library reads other bases for types that it can show in their width, up to 32 bits.
        edit->setReadOnly(tagtype::isWide(m_type) || m_type == tagtype::Bit);
    }
    const TagLimits limits(tags, id);
    m_limits->setText(limits.isNumber ? tr("%1 to %2").arg(limits.min, limits.max)
                                      : counted(limits.length, tr("1 byte of text"), tr("%1 bytes of text")));
    showValue(m_type == tagtype::Ascii ? QVariant(QByteArray()) : QVariant(0), nullptr);
}

void ValuePanel::takeValue(const QString &text)
{
    QString reason;
    const QVariant value = valueOfText(text, m_type, reason);
    if (value.isValid())
        reason = beyondLimits(m_session.tags(), m_id, value, text);
    if (reason.isEmpty())
        showValue(value, m_value);
    else
        showProblem(reason, m_value);
}

void ValuePanel::takeBase(const QString &text, int base)
{
    bool fits = false;
    bool isNoNumber = false;
    const qlonglong value = m_session.tags().toLongLongByBaseSystemString(m_id, text, fits, base, isNoNumber);
    const QLineEdit *const typed = base == 16 ? m_hexadecimal : m_octal;
    if (isNoNumber)
        showProblem(tr("\"%1\" is not a number in base %2").arg(text).arg(base), typed);
    else if (!fits)
        showProblem(tr("\"%1\" has more bits than the tag").arg(text), typed);
    else
        showValue(value, typed);
}

void ValuePanel::takeBytes(const QString &text)
{
    TagSystem &tags = m_session.tags();
    QByteArray bytes;
    const bool isText = m_type == tagtype::Ascii;
    const int size = isText ? tags.getScaleByID(m_id) : tags.getDataSizeByType(m_type);
    if (!bytesOfHex(text, bytes))
        showProblem(tr("\"%1\" is not a list of hexadecimal bytes").arg(text), m_bytes);
    else if (bytes.size() > size || (!isText && bytes.size() < size))
        showProblem(tr("%1 bytes are given, the tag has %2").arg(bytes.size()).arg(size), m_bytes);
    else
        showValue(tags.byteArrayToVarThreadSafe(m_id, bytes), m_bytes);
}

void ValuePanel::showValue(const QVariant &value, const QLineEdit *typed)
{
    showProblem(QString(), nullptr);
    TagSystem &tags = m_session.tags();
    if (typed != m_value)
        m_value->setText(textOfValue(value, m_type));
    if (typed != m_bytes)
        m_bytes->setText(spacedHex(tags.varToByteArrayThreadSafe(m_id, value)));
    if (!hasBases())
        return;
    const qlonglong number =
        m_type == tagtype::UInt64 ? static_cast<qlonglong>(value.toULongLong()) : value.toLongLong();
    if (typed != m_hexadecimal)
        m_hexadecimal->setText(tags.toBaseSystemStringFromLongLong(m_id, number, 16));
    if (typed != m_octal)
        m_octal->setText(tags.toBaseSystemStringFromLongLong(m_id, number, 8));
}

/// The other texts would show another value.
void ValuePanel::showProblem(const QString &reason, const QLineEdit *typed)
{
    m_problem->setText(look::narrow(reason));
    m_problem->setVisible(!reason.isEmpty());
    look::setTone(m_problem, look::Tone::Wrong);
    if (reason.isEmpty())
        return;
    for (QLineEdit *const edit : {m_value, m_hexadecimal, m_octal, m_bytes}) {
        if (edit != typed && edit->isEnabled())
            edit->clear();
    }
}
