// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "zelmar_label/label_table/labelloader.h"
#include "zelmar_label/tag_store/tagsystem.h"
#include "zelmar_label/widgets/addmultipletagspanel.h"
#include "zelmar_label/widgets/addresspicker.h"
#include "zelmar_label/widgets/simpleaddresspicker.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QRadioButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>

namespace {

struct Message
{
    QString context;
    QString source;
    QString translation;
    bool isFinished = false;
};

QList<Message> messagesOf(const QString &path)
{
    QFile file(path);
    QList<Message> messages;
    if (!file.open(QIODevice::ReadOnly))
        return messages;
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            messages.append({context, xml.readElementText(), QString(), false});
        } else if (xml.name() == QLatin1String("translation")) {
            messages.last().isFinished = !xml.attributes().hasAttribute(QLatin1String("type"));
            messages.last().translation = xml.readElementText();
        }
    }
    return messages;
}

QStringList keysOf(const QString &path)
{
    QStringList keys;
    const QList<Message> messages = messagesOf(path);
    for (const Message &message : messages)
        keys.append(message.context + QLatin1Char('|') + message.source);
    keys.sort();
    return keys;
}

QString sourceFile(const char *name)
{
    return QStringLiteral(ZELMAR_LABEL_TRANSLATION_SOURCES "/") + QLatin1String(name);
}

QStringList markers(const QString &text)
{
    QStringList found;
    auto match = QRegularExpression(QStringLiteral("%[0-9]")).globalMatch(text);
    while (match.hasNext())
        found.append(match.next().captured());
    found.sort();
    return found;
}

template<typename Widget>
QString textOf(const QWidget &form, const char *name)
{
    const auto *const widget = form.findChild<Widget *>(QLatin1String(name));
    return widget == nullptr ? QStringLiteral("(none)") : widget->text();
}

} // namespace

class TestTranslations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void dataTypesAreTranslated();
    void accessModesAreTranslated();
    void thePickerIsTranslated();
    void theSimplePickerIsTranslated();
    void thePanelIsTranslated();
    void textsStayEnglishWithoutTheTranslator();
    void everyTextHasAGermanOne();
    void everyTranslationFillsTheSamePlaces();
    void theSourcesHoldTheTextsOfTheCode_data();
    void theSourcesHoldTheTextsOfTheCode();

private:
    QTranslator m_german;
    label::LabelLoader m_label;
};

void TestTranslations::initTestCase()
{
    QVERIFY(m_german.load(QStringLiteral("zelmar_label_de"), QStringLiteral(ZELMAR_LABEL_TRANSLATIONS)));
    QVERIFY(QCoreApplication::installTranslator(&m_german));
    label::CommandInformationTalbe rows;
    rows.addCommandFormatter(Row().formatter());
    m_label.setDeviceTypesTable(rows);
}

void TestTranslations::cleanupTestCase()
{
    QCoreApplication::removeTranslator(&m_german);
}

void TestTranslations::dataTypesAreTranslated()
{
    const TagSystem tags(nullptr);
    const QStringList wanted = {QStringLiteral("Bit"),          QStringLiteral("INT(8)"),
                                QStringLiteral("UINT(8)"),      QStringLiteral("INT(16)"),
                                QStringLiteral("UINT(16)"),     QStringLiteral("INT(32)"),
                                QStringLiteral("UINT(32)"),     QStringLiteral("Gleitkomma (32)"),
                                QStringLiteral("Text (ASCII)"), QStringLiteral("Gleitkomma (64)"),
                                QStringLiteral("INT(64)"),      QStringLiteral("UINT(64)")};
    QCOMPARE(tags.dataTypeList(), wanted);
}

void TestTranslations::accessModesAreTranslated()
{
    const TagSystem tags(nullptr);
    const QStringList wanted = {QStringLiteral("Nur schreiben"), QStringLiteral("Lesen und schreiben")};
    QCOMPARE(tags.accessModeList(), wanted);
}

void TestTranslations::thePickerIsTranslated()
{
    AddressPicker picker(&m_label, nullptr);
    QCOMPARE(picker.windowTitle(), QStringLiteral("Adresse"));
    QCOMPARE(textOf<QLabel>(picker, "label_3"), QStringLiteral("Datentyp"));
    QCOMPARE(textOf<QLabel>(picker, "label_2"), QStringLiteral("Stationsnummer"));
    QCOMPARE(textOf<QLabel>(picker, "lab_length"), QStringLiteral("Länge"));
    QCOMPARE(textOf<QLabel>(picker, "label"), QStringLiteral("Passende Formate:"));
    picker.findChild<QLineEdit *>(QStringLiteral("RangeEditor"))->setText(QStringLiteral("no number"));
    QCOMPARE(picker.findChild<QListWidget *>(QStringLiteral("formattingList"))->item(0)->text(),
             QStringLiteral("Kein passendes Format!"));
}

void TestTranslations::theSimplePickerIsTranslated()
{
    const SimpleAddressPicker picker(&m_label, 1, 0, 0, {}, nullptr);
    QCOMPARE(picker.windowTitle(), QStringLiteral("Adresse"));
}

void TestTranslations::thePanelIsTranslated()
{
    const AddMultipleTagsPanel panel(nullptr);
    QCOMPARE(panel.windowTitle(), QStringLiteral("Mehrere Variablen anlegen"));
    QCOMPARE(panel.findChild<QGroupBox *>(QStringLiteral("addMultipleTagsGroupBox"))->title(),
             QStringLiteral("Mehrere Variablen anlegen"));
    QCOMPARE(textOf<QRadioButton>(panel, "sequentialRadioButton"), QStringLiteral("Fortlaufend:"));
    QCOMPARE(textOf<QRadioButton>(panel, "sameAsPLCAddressRadioButton"), QStringLiteral("Wie die SPS-Adresse:"));
    QCOMPARE(textOf<QLabel>(panel, "numberOfDigitsLabel"), QStringLiteral("Stellen: "));
    QCOMPARE(textOf<QLabel>(panel, "totalTagsLabel"), QStringLiteral("Anzahl: "));
}

void TestTranslations::textsStayEnglishWithoutTheTranslator()
{
    QCoreApplication::removeTranslator(&m_german);
    const AddressPicker picker(&m_label, nullptr);
    const QString title = textOf<QLabel>(picker, "label_3");
    QCoreApplication::installTranslator(&m_german);
    QCOMPARE(title, QStringLiteral("Data Type"));
}

void TestTranslations::everyTextHasAGermanOne()
{
    const QList<Message> messages = messagesOf(sourceFile("zelmar_label_de.ts"));
    QVERIFY(messages.size() > 40);
    for (const Message &message : messages)
        QVERIFY2(message.isFinished && !message.translation.isEmpty(), qPrintable(message.source));
}

void TestTranslations::everyTranslationFillsTheSamePlaces()
{
    const QList<Message> messages = messagesOf(sourceFile("zelmar_label_de.ts"));
    for (const Message &message : messages)
        QCOMPARE(markers(message.translation), markers(message.source));
}

void TestTranslations::theSourcesHoldTheTextsOfTheCode_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("the English source") << sourceFile("zelmar_label.ts");
    QTest::newRow("the German translation") << sourceFile("zelmar_label_de.ts");
}

void TestTranslations::theSourcesHoldTheTextsOfTheCode()
{
    QFETCH(QString, file);
    QTemporaryDir folder;
    const QString fresh = folder.filePath(QStringLiteral("fresh.ts"));
    QProcess lupdate;
    lupdate.start(QStringLiteral(ZELMAR_LABEL_LUPDATE),
                  {QStringLiteral("-silent"), QStringLiteral("-I"), QStringLiteral(ZELMAR_LABEL_SOURCE),
                   QStringLiteral(ZELMAR_LABEL_SOURCE "/zelmar_label"), QStringLiteral("-ts"), fresh});
    QVERIFY(lupdate.waitForFinished());
    QCOMPARE(lupdate.exitCode(), 0);
    // If not, scripts/update-translations.sh brings them in.
    QCOMPARE(keysOf(file), keysOf(fresh));
}

QTEST_MAIN(TestTranslations)
#include "tst_translations.moc"
