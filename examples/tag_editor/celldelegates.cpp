// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "celldelegates.h"

#include "projectsession.h"
#include "tagmodel.h"
#include "tagtypes.h"

#include <zelmar_label/tag_store/tagsystem.h>
#include <zelmar_label/widgets/simpleaddresspicker.h>

#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>

AddressDelegate::AddressDelegate(ProjectSession &session, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_session(session)
{
}

QWidget *AddressDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                       const QModelIndex &index) const
{
    const LinkInfo &link = m_session.judge().link(index.data(TagModel::LinkRole).toInt());
    if (!link.label)
        return QStyledItemDelegate::createEditor(parent, option, index);
    auto *const picker =
        new SimpleAddressPicker(m_session.pickerLabel(link.label), link.id, index.data(TagModel::TypeRole).toInt(),
                                tagtype::Bit, m_session.tags().dataTypeList(), parent);
    picker->setAutoFillBackground(true);
    auto *const self = const_cast<AddressDelegate *>(this);
    connect(picker, &SimpleAddressPicker::editFinished, self, [self, picker, table = parent->parentWidget()] {
        self->finish(picker);
        // The window is not active yet, so the view does not take the focus by itself.
        table->setFocus();
    });
    // Its line edit has keys and focus, which the view needs to know.
    picker->findChild<QLineEdit *>()->installEventFilter(self);
    return picker;
}

void AddressDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *const picker = qobject_cast<SimpleAddressPicker *>(editor);
    if (!picker) {
        QStyledItemDelegate::setEditorData(editor, index);
        return;
    }
    // A view sets the data again after each model change, which must not replace typed text.
    if (picker->property("isFilled").toBool())
        return;
    picker->setProperty("isFilled", true);
    picker->setAddress(index.data(Qt::EditRole).toString());
    picker->findChild<QLineEdit *>()->selectAll();
}

void AddressDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    if (auto *const picker = qobject_cast<SimpleAddressPicker *>(editor))
        model->setData(index, picker->fullAddressString());
    else
        QStyledItemDelegate::setModelData(editor, model, index);
}

void AddressDelegate::finish(QWidget *editor)
{
    Q_EMIT commitData(editor);
    Q_EMIT closeEditor(editor, NoHint);
}

bool AddressDelegate::eventFilter(QObject *object, QEvent *event)
{
    auto *const picker = qobject_cast<SimpleAddressPicker *>(object->parent());
    if (!picker)
        return QStyledItemDelegate::eventFilter(object, event);
    if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        // The focus went to its own dialog, another window or a menu, and will come back.
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            finish(picker);
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key == Qt::Key_Escape)
        Q_EMIT closeEditor(picker, RevertModelCache);
    else if (key == Qt::Key_Return || key == Qt::Key_Enter)
        finish(picker);
    else
        return key == Qt::Key_Tab || key == Qt::Key_Backtab ? QStyledItemDelegate::eventFilter(picker, event) : false;
    return true;
}

TypeDelegate::TypeDelegate(ProjectSession &session, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_session(session)
{
}

QWidget *TypeDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const
{
    auto *const types = new QComboBox(parent);
    types->addItems(m_session.tags().dataTypeList());
    return types;
}

void TypeDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    static_cast<QComboBox *>(editor)->setCurrentIndex(index.data(TagModel::TypeRole).toInt());
}

void TypeDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    model->setData(index, static_cast<QComboBox *>(editor)->currentIndex());
}
