// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/pickerfixtures.h"
#include "support/threads.h"

#include "zelmar_label/label_store/labelhold_p.h"
#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/addressdiagnosis.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QtTest>

#include <atomic>
#include <random>
#include <thread>
#include <vector>

using label::LabelInterface;
using label::LabelLoader;

namespace {

const QString blocks = QStringLiteral("ISO on TCP");
const QString registers = QStringLiteral("Registers");
constexpr int lastBlock = 2047;

Row row(const char *pattern, int type, const char *symbol, const char *rule = "")
{
    Row made;
    made.pattern = QLatin1String(pattern);
    made.type = type;
    made.prefixSymbol = QLatin1String(symbol);
    made.multipleRule = QLatin1String(rule);
    return made;
}

Driver driver(const QString &name, const QList<Row> &rows)
{
    Driver made;
    made.name = name;
    made.rows = rows;
    made.generalTable = QLatin1String("general_") + QString(name).remove(QLatin1Char(' '));
    made.deviceTable = QLatin1String("types_") + QString(name).remove(QLatin1Char(' '));
    return made;
}

LabelLoader &labelOf(const QString &name)
{
    QString error;
    return *dynamic_cast<LabelLoader *>(label::createLabel(name, error));
}

/// How long the threads work: a minute with ZELMAR_LABEL_LONG_TESTS=1.
int workingSeconds()
{
    return qEnvironmentVariableIsSet("ZELMAR_LABEL_LONG_TESTS") ? 60 : 2;
}

} // namespace

class TestSharedLabels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void cleanupTestCase();

    void manyThreadsUseALabelBesideAnOpenPicker();
    void aMemberIsAddedOnceByManyThreads();
    void aFreedLabelLivesWhileAPickerUsesIt();
    void aFreedLabelIsForgotten();
    void holdsOfCallersOwnLabelsKeepNothing();
};

void TestSharedLabels::init()
{
    writeScript(QStringLiteral("shared.js"),
                QStringLiteral("function init() { bitBase = 8; }"
                               "function getAddressRange(address) { return parseInt(address.substr(1), 10); }"
                               "function bitoffset(address) { return 3; }"));
    writeDriverDatabase(driverDatabasePath(),
                        {driver(blocks, {row("(M)(\\d+\\.[0-7])", 0, "M", "dot-oct:r_MB"), row("(MB)(\\d+)", 1, "MB"),
                                         row("(?:D\\b)(\\d+)", 2, "D"), row("(S)(\\d+)", 2, "S", "F>shared.js"),
                                         row("DB_DBW", 2, "DB"), row("DB_DBX", 0, "DB", "dot-oct:r_DB")}),
                         driver(registers, {row("(D)(\\d+)", 2, "D"), row("(X)(\\d+)", 0, "X", "union-dec:rm16_D")})});
}

void TestSharedLabels::cleanup()
{
    label::freeLabel(blocks);
    label::freeLabel(registers);
}

void TestSharedLabels::cleanupTestCase()
{
    removeScript(QStringLiteral("shared.js"));
    QDir(QFileInfo(driverDatabasePath()).absolutePath()).removeRecursively();
}

void TestSharedLabels::manyThreadsUseALabelBesideAnOpenPicker()
{
    const LogRecorder log;
    LabelLoader &shared = labelOf(blocks);
    const int rows = shared.countBitTypes();
    std::atomic<bool> isOver = false;
    Texts faults;
    std::vector<std::thread> threads;
    for (int number = 0; number < threadCount; ++number) {
        threads.emplace_back([&, number] {
            std::mt19937 random(static_cast<unsigned>(number));
            while (!isOver) {
                const int block = 1 + static_cast<int>(random() % lastBlock);
                const QString member = QStringLiteral("DB%1.DBW%2").arg(block).arg(random() % 10000);
                const int index = shared.addressValidation(member, 2);
                const label::AddressVerdict verdict = shared.judge(member, 2);
                faults.check(index >= rows && verdict.row == index && verdict.isAccepted && !verdict.isNewMember,
                             member);
                faults.check(shared.addressRange(index, member) == verdict.number, member);
                const QString bit = QStringLiteral("M%1.%2").arg(random() % 10000).arg(random() % 8);
                faults.check(shared.judge(bit).row == 0 && shared.bitOffset(0, bit) == bit.right(1).toInt(), bit);
                int registerRow = -1;
                const CommunicatorCommand held =
                    shared.convertBitCommandToRegisterCommand(command(bit, 0), registerRow);
                faults.check(registerRow == 1 && held.address == QLatin1String("MB") + bit.mid(1, bit.size() - 3), bit);
                faults.check(shared.addressValidation(QStringLiteral("S7"), 2) == 3 &&
                                 shared.addressRange(3, QStringLiteral("S7")) == 7,
                             QStringLiteral("S7"));
                faults.check(shared.judge(QStringLiteral("D12")).row == -1, QStringLiteral("D12"));
                faults.check(shared.getAllMatchedIndex(member, -1).contains(index), member);
                const label::AddressDiagnosis diagnosis =
                    label::diagnoseAddress(shared, QStringLiteral("DB%1.DBW").arg(block), -1);
                faults.check(!diagnosis.isAccepted(), QStringLiteral("diagnosis"));
                faults.check(shared.canonicalAddress(QStringLiteral("MB007")) == QStringLiteral("MB7"),
                             QStringLiteral("MB007"));
                faults.check(labelOf(registers).judge(QStringLiteral("3-D17")).number == 17, QStringLiteral("3-D17"));
                if (random() % 64 == 0)
                    label::freeLabel(QStringLiteral("none"));
            }
        });
    }
    AddressPicker picker(&shared, nullptr);
    picker.show();
    QElapsedTimer timer;
    timer.start();
    for (int step = 0; timer.elapsed() < workingSeconds() * 1000; ++step) {
        picker.setDataType(step % 2 == 0 ? 0 : 3);
        picker.setRange(QString::number(step % 100));
        picker.setLabel(&shared);
        QCoreApplication::processEvents();
    }
    isOver = true;
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(faults.texts().mid(0, 5), QStringList());
    QVERIFY(shared.countBitTypes() > rows + 100);
    QVERIFY(shared.countBitTypes() <= rows + lastBlock);
}

void TestSharedLabels::aMemberIsAddedOnceByManyThreads()
{
    const LogRecorder log;
    LabelLoader &shared = labelOf(blocks);
    const int rows = shared.countBitTypes();
    constexpr int members = 200;
    Texts faults;
    onAllThreads([&](int) {
        for (int block = 1; block <= members; ++block) {
            const QString address = QStringLiteral("DB%1.DBX4.7").arg(block);
            const int index = shared.addressValidation(address, 0);
            faults.check(index >= rows && index < rows + members &&
                             shared.getPrefixSymbolByTypeID(index) == QStringLiteral("DB%1.DBX").arg(block),
                         address);
        }
    });
    QCOMPARE(faults.texts().mid(0, 5), QStringList());
    QCOMPARE(shared.countBitTypes(), rows + members);
}

void TestSharedLabels::aFreedLabelLivesWhileAPickerUsesIt()
{
    const LogRecorder log;
    LabelLoader *const shared = &labelOf(registers);
    AddressPicker picker(shared, nullptr);
    label::freeLabel(registers);
    picker.setDataType(3);
    picker.setRange(QStringLiteral("100"));
    QCOMPARE(picker.address(), QStringLiteral("D100"));
    QVERIFY(&labelOf(registers) != shared);
    QCOMPARE(shared->countBitTypes(), 2);
}

void TestSharedLabels::aFreedLabelIsForgotten()
{
    const LogRecorder log;
    QString error;
    std::weak_ptr<LabelInterface> watched;
    {
        const label::LabelHold hold = label::holdLabel(registers, error);
        watched = hold;
        label::freeLabel(registers);
        QCOMPARE(hold->countBitTypes(), 2);
    }
    QVERIFY(watched.expired());
}

void TestSharedLabels::holdsOfCallersOwnLabelsKeepNothing()
{
    LabelLoader own;
    const label::LabelHold hold = label::holdLabel(&own);
    QCOMPARE(hold.get(), static_cast<LabelInterface *>(&own));
    QCOMPARE(hold.use_count(), 0L);
}

QTEST_MAIN(TestSharedLabels)

#include "tst_sharedlabels.moc"
