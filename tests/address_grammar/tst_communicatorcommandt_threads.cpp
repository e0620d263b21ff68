// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/streamedcommands.h"
#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/address_grammar/communicatorcommandt.h"

#include <QDataStream>
#include <QSemaphore>
#include <QTest>

#include <atomic>
#include <functional>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

constexpr int aWhile = 50;
constexpr int longEnough = 20000;

/// A device that blocks inside a read or a write until it is released, to examine its user at that point.
class PausingDevice : public QIODevice
{
public:
    explicit PausingDevice(const QByteArray &content = QByteArray())
        : m_content(content)
    {
        open(QIODevice::ReadWrite | QIODevice::Unbuffered);
    }

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return m_content.size(); }

    QSemaphore inside;
    QSemaphore goOn;

protected:
    qint64 readData(char *data, qint64 size) override
    {
        pauseOnce();
        const int part = qMin(static_cast<int>(size), m_content.size());
        std::copy_n(m_content.constData(), part, data);
        m_content.remove(0, part);
        return part;
    }

    qint64 writeData(const char *, qint64 size) override
    {
        pauseOnce();
        return size;
    }

private:
    void pauseOnce()
    {
        if (m_paused)
            return;
        m_paused = true;
        inside.release();
        goOn.acquire();
    }

    QByteArray m_content;
    bool m_paused = false;
};

class ThrowingDevice : public QIODevice
{
public:
    ThrowingDevice() { open(QIODevice::ReadWrite | QIODevice::Unbuffered); }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *, qint64) override { throw std::runtime_error("reading"); }
    qint64 writeData(const char *, qint64) override { throw std::runtime_error("writing"); }
};

using Operation = std::function<void(CommunicatorCommandT &)>;

void writeSomewhere(CommunicatorCommandT &command)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    command.outputDataStream(stream);
}

void readSomething(CommunicatorCommandT &command)
{
    QDataStream stream(QByteArray::fromHex("00000001000000020000000100000004004d0031"));
    command.inputDataStream(stream);
}

/// Runs an operation on a new thread and records whether it ended.
class Runner
{
public:
    Runner(CommunicatorCommandT &command, const Operation &operation)
        : m_thread([this, &command, operation] {
            operation(command);
            m_done.release();
        })
    {
    }
    ~Runner() { m_thread.join(); }
    Q_DISABLE_COPY(Runner)

    bool isDone(int milliseconds)
    {
        if (!m_done.tryAcquire(1, milliseconds))
            return false;
        m_done.release();
        return true;
    }

private:
    QSemaphore m_done;
    std::thread m_thread;
};

} // namespace

Q_DECLARE_METATYPE(Operation)

/// Commands that several threads use at once, and the lock of each.
class TestCommunicatorCommandTThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lockedOperationsWaitForAWriter_data();
    void lockedOperationsWaitForAWriter();
    void lockedOperationsWaitForAReader_data();
    void lockedOperationsWaitForAReader();
    void unlockedOperationsDoNotWait();
    void eachObjectHasALockOfItsOwn();
    void anExceptionReleasesTheLock();
    void recordsAreNeverTorn();
    void staticOperationsServeManyThreads();
};

void TestCommunicatorCommandTThreads::lockedOperationsWaitForAWriter_data()
{
    QTest::addColumn<Operation>("operation");

    QTest::newRow("outputDataStream") << Operation(writeSomewhere);
    QTest::newRow("inputDataStream") << Operation(readSomething);
    QTest::newRow("dataTypeName") << Operation([](CommunicatorCommandT &command) { command.dataTypeName(); });
    QTest::newRow("isNull") << Operation([](CommunicatorCommandT &command) { command.isNull(); });
    QTest::newRow("getDataSize") << Operation([](CommunicatorCommandT &command) { command.getDataSize(); });
    QTest::newRow("makekey") << Operation([](CommunicatorCommandT &command) { command.makekey(); });
    QTest::newRow("assignment of a plain command, for its key")
        << Operation([](CommunicatorCommandT &command) { command = CommunicatorCommand(); });
}

void TestCommunicatorCommandTThreads::lockedOperationsWaitForAWriter()
{
    QFETCH(Operation, operation);
    CommunicatorCommandT command = rawCommand(QStringLiteral("D100"), 2, 1);
    PausingDevice device;
    QDataStream stream(&device);
    Runner writer(command, [&stream](CommunicatorCommandT &used) { used.outputDataStream(stream); });
    QVERIFY(device.inside.tryAcquire(1, longEnough));
    Runner other(command, operation);
    const bool doneTooEarly = other.isDone(aWhile);
    device.goOn.release();
    QVERIFY(!doneTooEarly);
    QVERIFY(other.isDone(longEnough));
    QVERIFY(writer.isDone(longEnough));
}

void TestCommunicatorCommandTThreads::lockedOperationsWaitForAReader_data()
{
    lockedOperationsWaitForAWriter_data();
}

void TestCommunicatorCommandTThreads::lockedOperationsWaitForAReader()
{
    QFETCH(Operation, operation);
    CommunicatorCommandT command = rawCommand(QStringLiteral("D100"), 2, 1);
    PausingDevice device(QByteArray::fromHex("00000001000000020000000100000004004d0031"));
    QDataStream stream(&device);
    Runner reader(command, [&stream](CommunicatorCommandT &used) { used.inputDataStream(stream); });
    QVERIFY(device.inside.tryAcquire(1, longEnough));
    Runner other(command, operation);
    const bool doneTooEarly = other.isDone(aWhile);
    device.goOn.release();
    QVERIFY(!doneTooEarly);
    QVERIFY(other.isDone(longEnough));
    QVERIFY(reader.isDone(longEnough));
}

void TestCommunicatorCommandTThreads::unlockedOperationsDoNotWait()
{
    CommunicatorCommandT command(plainCommand(QStringLiteral("3-D100"), 2, 6, 0));
    PausingDevice device;
    QDataStream stream(&device);
    Runner writer(command, [&stream](CommunicatorCommandT &used) { used.outputDataStream(stream); });
    QVERIFY(device.inside.tryAcquire(1, longEnough));
    bool isBlock = false;
    bool isReadOnce = false;
    int station = -2;
    QString key;
    QString device100;
    QString copiedAddress;
    QString assignedKey;
    {
        Runner other(command, [&](CommunicatorCommandT &used) {
            isBlock = used.isBlockCommand();
            isReadOnce = used.isReadOnce();
            key = used.stringKey();
            station = CommunicatorCommandT::getStationId(used);
            device100 = CommunicatorCommandT::getAddressString(used);
            copiedAddress = CommunicatorCommandT(used).address;
            CommunicatorCommandT assigned;
            assigned = used;
            assignedKey = assigned.stringKey();
        });
        const bool done = other.isDone(longEnough);
        device.goOn.release();
        QVERIFY(done);
    }
    QVERIFY(isBlock);
    QVERIFY(isReadOnce);
    QCOMPARE(key, QStringLiteral("3-D100_2_6"));
    QCOMPARE(station, 3);
    QCOMPARE(device100, QStringLiteral("D100"));
    QCOMPARE(copiedAddress, QStringLiteral("3-D100"));
    QCOMPARE(assignedKey, QStringLiteral("3-D100_2_6"));
    QVERIFY(writer.isDone(longEnough));
}

void TestCommunicatorCommandTThreads::eachObjectHasALockOfItsOwn()
{
    CommunicatorCommandT command = rawCommand(QStringLiteral("D100"), 2, 1);
    PausingDevice device;
    QDataStream stream(&device);
    Runner writer(command, [&stream](CommunicatorCommandT &used) { used.outputDataStream(stream); });
    QVERIFY(device.inside.tryAcquire(1, longEnough));
    CommunicatorCommandT copy(command);
    bool done = false;
    {
        Runner other(copy, [](CommunicatorCommandT &used) { used.makekey(); });
        done = other.isDone(longEnough);
        device.goOn.release();
    }
    QVERIFY(done);
    QCOMPARE(copy.stringKey(), QStringLiteral("D100_2_1"));
}

void TestCommunicatorCommandTThreads::anExceptionReleasesTheLock()
{
    CommunicatorCommandT command = rawCommand(QStringLiteral("D100"), 2, 1);
    ThrowingDevice device;
    QDataStream stream(&device);
    QVERIFY_EXCEPTION_THROWN(command.outputDataStream(stream), std::runtime_error);
    {
        Runner other(command, [](CommunicatorCommandT &used) { used.makekey(); });
        QVERIFY(other.isDone(longEnough));
    }
    QVERIFY_EXCEPTION_THROWN(command.inputDataStream(stream), std::runtime_error);
    {
        Runner other(command, [](CommunicatorCommandT &used) { used.isNull(); });
        QVERIFY(other.isDone(longEnough));
    }
}

// Two records with nothing in common are read in and written out by several threads; what comes out is one or the
// other, never a mixture.
void TestCommunicatorCommandTThreads::recordsAreNeverTorn()
{
    constexpr int passes = 3000;
    CommunicatorCommandT first = rawCommand(QStringLiteral("1-D100"), 2, 10, 100);
    CommunicatorCommandT second = rawCommand(QStringLiteral("2-LongerAddress200"), 0, 20, 200);
    const QByteArray firstBytes = written(first);
    const QByteArray secondBytes = written(second);
    CommunicatorCommandT shared(first);
    std::atomic<int> torn{0};

    const auto read = [&](const QByteArray &bytes) {
        for (int i = 0; i < passes; ++i) {
            QDataStream stream(bytes);
            shared.inputDataStream(stream);
        }
    };
    const auto write = [&] {
        for (int i = 0; i < passes; ++i) {
            shared.makekey();
            const QByteArray bytes = written(shared);
            const int size = shared.getDataSize();
            const QString name = shared.dataTypeName();
            const bool isOne = bytes == firstBytes || bytes == secondBytes;
            const bool hasSize = size == 20 || size == 3;
            const bool hasName = name == QLatin1String("Word") || name == QLatin1String("Bit");
            if (!isOne || !hasSize || !hasName || shared.isNull())
                ++torn;
        }
    };
    {
        std::vector<std::thread> threads;
        threads.emplace_back(read, firstBytes);
        threads.emplace_back(read, secondBytes);
        threads.emplace_back(write);
        threads.emplace_back(write);
        for (std::thread &thread : threads)
            thread.join();
    }
    QCOMPARE(torn.load(), 0);
    shared.makekey();
    const QString key = shared.stringKey();
    QVERIFY2(key == QLatin1String("1-D100_2_10") || key == QLatin1String("2-LongerAddress200_0_20"), qPrintable(key));
}

void TestCommunicatorCommandTThreads::staticOperationsServeManyThreads()
{
    const CommunicatorCommandT command = rawCommand(QStringLiteral("17-D100"), 2, 1);
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int pass = 0; pass < 2000; ++pass) {
                if (CommunicatorCommandT::getStationId(command) != 17)
                    ++wrong;
                if (CommunicatorCommandT::getAddressString(command) != QLatin1String("D100"))
                    ++wrong;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(wrong.load(), 0);
}

QTEST_APPLESS_MAIN(TestCommunicatorCommandTThreads)

#include "tst_communicatorcommandt_threads.moc"
