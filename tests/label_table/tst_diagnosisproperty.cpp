// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addressdiagnosis.h"

#include "support/logrecorder.h"
#include "support/randomcases.h"
#include "support/shippedfiles.h"
#include "zelmar_label/label_store/labelreader.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>

#include <memory>

using label::AddressDiagnosis;
using label::LabelLoader;

namespace {

const QString connection = QStringLiteral("drivers of the diagnosis property");

/// The number of texts of all drivers together, unless the environment sets it.
int textCount()
{
    bool isSet = false;
    const int count = qEnvironmentVariableIntValue("ZELMAR_LABEL_DIAGNOSIS_TEXTS", &isSet);
    return isSet ? count : 20000;
}

/// One line per row.
QStringList rowsOf(const LabelLoader &label)
{
    QStringList rows;
    const label::CommandInformationTalbe &table = label.deviceTypesTable();
    for (int index = 0; index < table.countFormatters(); ++index) {
        const label::CommandFormatter &row = *table.formatterAt(index);
        rows.append(row.pattern() + QLatin1Char('\t') + row.prefixSymbol() + QLatin1Char('\t') +
                    row.getEditorUsedPrefixsymbol());
    }
    return rows;
}

/// True when a row accepts the address, with its number and type tested.
bool isReallyAccepted(LabelLoader &label, const QString &address, int type)
{
    const int index = label.addressValidation(address, type);
    const label::CommandFormatter *const row = label.deviceTypesTable().formatterAt(index);
    return row && row->isAddressValid(address) && label::passesTypeFilter(row->type(), type);
}

QString garbage(Random &random)
{
    static const QString characters = QString::fromUtf8("DBXWMTNCSIU0123456789AFafxlO.:/\\, -_+*()\xc3\xa4\xd9\xa3");
    QString text;
    for (int left = random.below(12); left > 0; --left)
        text.append(characters.at(random.below(characters.size())));
    return text;
}

} // namespace

/// Tests that the diagnosis of an address agrees with `addressValidation`.
class TestDiagnosisProperty : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void saysWhatTheLabelDoes_data();
    void saysWhatTheLabelDoes();
    void saysWhatAnyTableDoes();
    void cleanupTestCase();

private:
    std::unique_ptr<LabelLoader> freshLabel(const QString &driver) const;
    /// The fault in the diagnosis of a text; empty for none. The text may add a row to the label.
    QString complaint(LabelLoader &label, const QString &text, int type, LogRecorder &log);

    QHash<QString, QStringList> m_addresses;
    QStringList m_allAddresses;
    int m_accepted = 0;
    int m_unchecked = 0;
    int m_withSuggestions = 0;
};

void TestDiagnosisProperty::initTestCase()
{
    bringScriptsHere();
    QHash<QString, QStringList> addressesOfFile;
    const QList<ShippedDriver> files = shippedDrivers();
    for (const ShippedDriver &file : files)
        addressesOfFile.insert(file.name, file.addresses);
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    db.setDatabaseName(QStringLiteral(ZELMAR_LABEL_DRIVERS_RUNTIME "/database/drivers"));
    db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    QVERIFY(db.open());
    QSqlQuery query(db);
    QVERIFY(query.exec(QStringLiteral("SELECT name, device_table FROM table_index")));
    while (query.next()) {
        const QString file = query.value(1).toString().section(QLatin1String("_types"), 0, 0) + QLatin1String(".tsv");
        QVERIFY2(!addressesOfFile.value(file).isEmpty(), qPrintable(file));
        m_addresses.insert(query.value(0).toString(), addressesOfFile.value(file));
        m_allAddresses += addressesOfFile.value(file);
    }
    QVERIFY(m_addresses.size() >= 8);
}

void TestDiagnosisProperty::cleanupTestCase()
{
    QSqlDatabase::removeDatabase(connection);
    qInfo("%d accepted, %d of them unchecked; %d with suggestions", m_accepted, m_unchecked, m_withSuggestions);
}

std::unique_ptr<LabelLoader> TestDiagnosisProperty::freshLabel(const QString &driver) const
{
    QString error;
    std::unique_ptr<LabelLoader> label(label::readLabel(QSqlDatabase::database(connection), driver, error));
    if (!label)
        qFatal("%s", qPrintable(error));
    return label;
}

void TestDiagnosisProperty::saysWhatTheLabelDoes_data()
{
    QTest::addColumn<QString>("driver");
    QStringList drivers = m_addresses.keys();
    drivers.sort();
    for (const QString &driver : qAsConst(drivers))
        QTest::newRow(qPrintable(driver)) << driver;
}

QString TestDiagnosisProperty::complaint(LabelLoader &label, const QString &text, int type, LogRecorder &log)
{
    const int rows = label.countType(0);
    log.take();
    const AddressDiagnosis found = label::diagnoseAddress(label, text, type);
    if (!log.lines().isEmpty())
        return QLatin1String("logs ") + log.lines().first();
    if (label.countType(0) != rows)
        return QStringLiteral("adds a row");
    const bool isAccepted = label.addressValidation(text, type) >= 0;
    if (found.isAccepted() != isAccepted)
        return isAccepted ? QStringLiteral("refuses what is accepted") : QStringLiteral("accepts what is refused");
    const bool isSound = found.kind() == AddressDiagnosis::Kind::Accepted;
    if (label::diagnosisSentence(found).isEmpty() != isSound)
        return QStringLiteral("has a sentence for what is accepted, or none for what is not");
    if (isSound && (found.isUnchecked || !found.suggestions.isEmpty()))
        return QStringLiteral("doubts what is accepted");
    if (found.position() > found.address.size() || found.suggestions.size() > 5)
        return QStringLiteral("has a place outside the text, or too many suggestions");
    for (const QString &suggestion : found.suggestions) {
        if (suggestion == text || !isReallyAccepted(label, suggestion, type))
            return QLatin1String("suggests ") + suggestion;
    }
    m_accepted += isAccepted ? 1 : 0;
    m_unchecked += found.isUnchecked ? 1 : 0;
    m_withSuggestions += found.suggestions.isEmpty() ? 0 : 1;
    return QString();
}

void TestDiagnosisProperty::saysWhatTheLabelDoes()
{
    QFETCH(QString, driver);
    LogRecorder log;
    quint32 seed = 0;
    for (const QChar character : driver)
        seed = seed * 31 + character.unicode();
    Random random(seed);
    const QStringList addresses = m_addresses.value(driver);
    const QList<int> types = {-1, -1, 0, 2};
    std::unique_ptr<LabelLoader> label = freshLabel(driver);
    const int ownRows = label->countType(0);
    const QStringList rows = rowsOf(*label);
    const int texts = qMax(1, textCount() / m_addresses.size());
    for (int text = 0; text < texts; ++text) {
        const int kind = random.below(100);
        const QString made = kind < 80   ? mutated(random, random.pick(addresses))
                             : kind < 90 ? mutated(random, random.pick(m_allAddresses))
                                         : garbage(random);
        const int type = random.pick(types);
        const QString wrong = complaint(*label, made, type, log);
        QVERIFY2(wrong.isEmpty(), qPrintable(QStringLiteral("\"%1\", type %2: %3").arg(made).arg(type).arg(wrong)));
        // Addresses beyond the limits of their family add a row each time, and a label with thousands is slow.
        constexpr int mostNewRows = 100;
        if (label->countType(0) > ownRows + mostNewRows) {
            QCOMPARE(rowsOf(*label).mid(0, ownRows), rows);
            label = freshLabel(driver);
        }
    }
    QVERIFY(m_accepted > 0);
    QVERIFY(m_withSuggestions > 0);
}

void TestDiagnosisProperty::saysWhatAnyTableDoes()
{
    // Broken patterns, limits and rules, and scripts that fail, log lines that are not the diagnosis' own.
    const LogRecorder log;
    writeRandomScripts();
    Random random(20261121);
    const QList<int> types = {-1, -1, 0, 2};
    for (int round = 0; round < 600; ++round) {
        label::CommandInformationTalbe table;
        QStringList samples;
        for (int rows = random.below(10); rows >= 0; --rows) {
            const RowCase made = randomRow(random);
            table.addCommandFormatter(made.row.formatter());
            samples.append(made.sample);
        }
        for (int text = 0; text < 40; ++text) {
            const QString address = mutated(random, random.pick(samples));
            const int type = random.pick(types);
            const AddressDiagnosis found = label::diagnoseAddress(table, address, type);
            const int index = table.getFirstMatchedAddressIndex(address, type);
            QVERIFY2(found.isAccepted() == (index >= 0), qPrintable(address));
            QVERIFY2(index < 0 || found.row.index == index, qPrintable(address));
            for (const QString &suggestion : found.suggestions)
                QVERIFY2(table.getFirstMatchedAddressIndex(suggestion, type) >= 0, qPrintable(suggestion));
        }
    }
}

QTEST_GUILESS_MAIN(TestDiagnosisProperty)

#include "tst_diagnosisproperty.moc"
