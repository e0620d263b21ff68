// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_FORMSHAPE_H
#define ZELMAR_LABEL_TESTS_FORMSHAPE_H

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QTranslator>

#include <functional>
#include <initializer_list>

QT_BEGIN_NAMESPACE
class QDialog;
class QLayout;
class QWidget;
QT_END_NAMESPACE

/// The texts as a list, for comparing.
QStringList texts(std::initializer_list<const char *> texts);

/// The items of a layout, in order, as "QLabel label_3" and "spacer 40x20 Expanding Minimum".
QStringList entriesOf(const QLayout &layout);

/// Class and object name of an object's direct children in order of creation; those without a name are left out.
QStringList namedChildren(const QObject &parent);

/// The class's own members of its meta-object, in order, as "signal addressChanged(QString address)" and "private slot
/// rangeEditChanged()".
QStringList ownMethods(const QMetaObject &type);

/// The object below `parent` with this name, which must exist.
template<typename Object>
Object &child(const QObject &parent, const QString &name)
{
    auto *const found = parent.findChild<Object *>(name);
    if (found == nullptr)
        qFatal("no %s %s", Object::staticMetaObject.className(), qPrintable(name));
    return *found;
}

/// Shows the widget and waits until it is active.
bool showActive(QWidget &window);

/// Replaces the widget's text by typing.
void typeOver(QWidget &edit, const QString &keys);

/// Replaces the widget's text by pasting from the clipboard, like a user.
void paste(QWidget &edit, const QString &text);

/// Answers, during its lifetime, the modal dialogs shown, one after the other. Rejects a dialog that an answer leaves
/// open, so that no test waits for it.
class DialogAnswer : public QObject
{
public:
    explicit DialogAnswer(std::function<void(QDialog &)> answer);

    /// Number of dialogs.
    int count() const;

private:
    void look();

    std::function<void(QDialog &)> m_answer;
    QTimer m_timer;
    int m_count = 0;
};

/// Translates, during its lifetime, the texts of one context to themselves in angle brackets.
class BracketTranslator : public QTranslator
{
public:
    explicit BracketTranslator(const char *context);
    ~BracketTranslator() override;

    QString translate(const char *context, const char *sourceText, const char *disambiguation = nullptr,
                      int n = -1) const override;
    bool isEmpty() const override;

    /// The requested source texts, each once, in order of the first request.
    QStringList asked() const;

private:
    QByteArray m_context;
    mutable QStringList m_asked;
};

#endif
