// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/formshape.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLayout>
#include <QMetaEnum>
#include <QMetaMethod>
#include <QPointer>
#include <QSpacerItem>
#include <QtTest>

#include <utility>

namespace {

QString classAndName(const QObject &object)
{
    return QLatin1String(object.metaObject()->className()) + QLatin1Char(' ') + object.objectName();
}

QString policyName(QSizePolicy::Policy policy)
{
    return QLatin1String(QMetaEnum::fromType<QSizePolicy::Policy>().valueToKey(policy));
}

QString shapeOf(const QSpacerItem &spacer)
{
    const QSize size = spacer.sizeHint();
    const QSizePolicy policy = spacer.sizePolicy();
    return QStringLiteral("spacer %1x%2 %3 %4")
        .arg(size.width())
        .arg(size.height())
        .arg(policyName(policy.horizontalPolicy()), policyName(policy.verticalPolicy()));
}

QString entry(QLayoutItem &item)
{
    if (item.spacerItem() != nullptr)
        return shapeOf(*item.spacerItem());
    if (item.layout() != nullptr)
        return classAndName(*item.layout());
    return classAndName(*item.widget());
}

QString kindOf(const QMetaMethod &method)
{
    if (method.methodType() == QMetaMethod::Signal)
        return QStringLiteral("signal");
    const QString kind =
        method.methodType() == QMetaMethod::Slot ? QStringLiteral("slot") : QStringLiteral("method or constructor");
    switch (method.access()) {
    case QMetaMethod::Private:
        return QLatin1String("private ") + kind;
    case QMetaMethod::Protected:
        return QLatin1String("protected ") + kind;
    case QMetaMethod::Public:
        break;
    }
    return QLatin1String("public ") + kind;
}

QString argumentsOf(const QMetaMethod &method)
{
    const QList<QByteArray> types = method.parameterTypes();
    const QList<QByteArray> names = method.parameterNames();
    QStringList arguments;
    for (int i = 0; i < types.size(); ++i)
        arguments.append(QString::fromLatin1(types.at(i) + ' ' + names.at(i)).trimmed());
    return arguments.join(QLatin1String(", "));
}

} // namespace

QStringList texts(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list.append(QString::fromUtf8(text));
    return list;
}

QStringList entriesOf(const QLayout &layout)
{
    QStringList entries;
    for (int i = 0; i < layout.count(); ++i)
        entries.append(entry(*layout.itemAt(i)));
    return entries;
}

QStringList namedChildren(const QObject &parent)
{
    QStringList names;
    for (const QObject *one : parent.children()) {
        if (!one->objectName().isEmpty())
            names.append(classAndName(*one));
    }
    return names;
}

QStringList ownMethods(const QMetaObject &type)
{
    QStringList methods;
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        const QMetaMethod method = type.method(i);
        methods.append(
            QStringLiteral("%1 %2(%3)").arg(kindOf(method), QString::fromLatin1(method.name()), argumentsOf(method)));
    }
    return methods;
}

bool showActive(QWidget &window)
{
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

void typeOver(QWidget &edit, const QString &keys)
{
    QTest::keySequence(&edit, QKeySequence::SelectAll);
    QTest::keyClicks(&edit, keys);
}

void paste(QWidget &edit, const QString &text)
{
    QApplication::clipboard()->setText(text);
    QTest::keySequence(&edit, QKeySequence::SelectAll);
    QTest::keySequence(&edit, QKeySequence::Paste);
}

DialogAnswer::DialogAnswer(std::function<void(QDialog &)> answer)
    : m_answer(std::move(answer))
{
    connect(&m_timer, &QTimer::timeout, this, &DialogAnswer::look);
    m_timer.start(1);
}

int DialogAnswer::count() const
{
    return m_count;
}

void DialogAnswer::look()
{
    const QPointer<QDialog> dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (dialog.isNull() || !dialog->isActiveWindow())
        return;
    m_timer.stop();
    ++m_count;
    m_answer(*dialog);
    if (!dialog.isNull() && dialog->isVisible())
        dialog->reject();
    m_timer.start(1);
}

BracketTranslator::BracketTranslator(const char *context)
    : m_context(context)
{
    QCoreApplication::installTranslator(this);
}

BracketTranslator::~BracketTranslator()
{
    QCoreApplication::removeTranslator(this);
}

QString BracketTranslator::translate(const char *context, const char *sourceText, const char * /*disambiguation*/,
                                     int /*n*/) const
{
    if (m_context != context)
        return {};
    const QString text = QString::fromUtf8(sourceText);
    if (!m_asked.contains(text))
        m_asked.append(text);
    return QLatin1Char('<') + text + QLatin1Char('>');
}

bool BracketTranslator::isEmpty() const
{
    return false;
}

QStringList BracketTranslator::asked() const
{
    return m_asked;
}
