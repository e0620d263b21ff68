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

/// What stands in a layout, in order, as "QLabel label_3" and "spacer 40x20 Expanding Minimum".
QStringList entriesOf(const QLayout &layout);

/// Class and object name of an object's own children in the order of their making; those without a name are left out.
QStringList namedChildren(const QObject &parent);

/// What the class itself adds to its meta-object, in order, as "signal addressChanged(QString address)" and
/// "private slot rangeEditChanged()".
QStringList ownMethods(const QMetaObject &type);

/// The object below `parent` with this name, which has to be there.
template<typename Object>
Object &child(const QObject &parent, const QString &name)
{
    auto *const found = parent.findChild<Object *>(name);
    if (found == nullptr)
        qFatal("no %s %s", Object::staticMetaObject.className(), qPrintable(name));
    return *found;
}

/// Shows the widget and waits until it gets the key strokes.
bool showActive(QWidget &window);

/// Types over what the widget holds.
void typeOver(QWidget &edit, const QString &keys);

/// Puts the text on the clipboard and pastes it over what the widget holds, as a person does.
void paste(QWidget &edit, const QString &text);

/// Answers the modal dialogs that are shown and active while it lives, one after the other. A dialog that an answer
/// leaves open is rejected, so that no test waits for it.
class DialogAnswer : public QObject
{
public:
    explicit DialogAnswer(std::function<void(QDialog &)> answer);

    /// How many dialogs there were.
    int count() const;

private:
    void look();

    std::function<void(QDialog &)> m_answer;
    QTimer m_timer;
    int m_count = 0;
};

/// While it lives, the texts of one context are translated to themselves in angle brackets.
class BracketTranslator : public QTranslator
{
public:
    explicit BracketTranslator(const char *context);
    ~BracketTranslator() override;

    QString translate(const char *context, const char *sourceText, const char *disambiguation = nullptr,
                      int n = -1) const override;
    bool isEmpty() const override;

    /// The source texts that were asked for, each once, in the order of the first question.
    QStringList asked() const;

private:
    QByteArray m_context;
    mutable QStringList m_asked;
};

#endif
