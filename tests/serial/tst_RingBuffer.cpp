#include "serial/RingBuffer.h"
#include "support/TestCase.h"

#include <QTest>

#include <cstring>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype Block = RingBuffer::BlockSize;

// Bytes that tell their place, so that a lost or doubled one shows.
QByteArray pattern(qsizetype size, int start = 0)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (qsizetype i = 0; i < size; ++i) {
        bytes[i] = static_cast<char>((start + i) % 251);
    }
    return bytes;
}

void append(RingBuffer &buffer, const QByteArray &bytes)
{
    buffer.append(bytes.constData(), bytes.size());
}

QByteArray readAll(RingBuffer &buffer)
{
    QByteArray bytes(buffer.size(), Qt::Uninitialized);
    const qsizetype count = buffer.read(bytes.data(), bytes.size());
    return bytes.first(count);
}

QList<qsizetype> chunkSizes(const RingBuffer &buffer)
{
    QList<qsizetype> sizes;
    for (const QByteArray &chunk : buffer.chunks()) {
        sizes.append(chunk.size());
    }
    return sizes;
}

using Sizes = QList<qsizetype>;

} // namespace

class tst_RingBuffer : public TestCase
{
    Q_OBJECT

private slots:
    void startsEmptyWithOneChunk();
    void reserveOnEmpty_data();
    void reserveOnEmpty();
    void reserveTakesRoomInTheChunk();
    void reserveGrowsAChunkInUseByLessThanHalf();
    void reserveAppendsAChunkToOneInUseByHalf();
    void appendedChunkIsAsLargeAsAsked();
    void freeMovesTheHead();
    void freeRemovesUsedUpChunks();
    void freeOfAllBringsTheChunkBackToTheBlock_data();
    void freeOfAllBringsTheChunkBackToTheBlock();
    void chopMovesTheTail();
    void chopRemovesUsedUpChunks();
    void chopOfAllEmpties_data();
    void chopOfAllEmpties();
    void reserveAndChopLeavesTheBytesBefore();
    void clearKeepsOneChunkWithoutMemory();
    void steadyExchangeKeepsItsMemory();
    void readInPieces_data();
    void readInPieces();
    void readOfNothing();
    void containsLooksAtHeldBytesOnly();
    void longRunKeepsOrder();
};

void tst_RingBuffer::startsEmptyWithOneChunk()
{
    const RingBuffer buffer;
    QVERIFY(buffer.isEmpty());
    QCOMPARE(buffer.size(), 0);
    QCOMPARE(buffer.nextBlockSize(), 0);
    QCOMPARE(chunkSizes(buffer), Sizes{0});
    QCOMPARE(RingBuffer::BlockSize, 16384);
}

void tst_RingBuffer::reserveOnEmpty_data()
{
    QTest::addColumn<qsizetype>("size");
    QTest::addColumn<qsizetype>("chunk");
    QTest::newRow("nothing") << qsizetype(0) << Block;
    QTest::newRow("one byte") << qsizetype(1) << Block;
    QTest::newRow("a block") << Block << Block;
    QTest::newRow("more than a block") << Block + 1 << Block + 1;
}

void tst_RingBuffer::reserveOnEmpty()
{
    QFETCH(qsizetype, size);
    QFETCH(qsizetype, chunk);
    RingBuffer buffer;
    const char *const begin = buffer.reserve(size);
    QCOMPARE(begin, buffer.nextBlock());
    QCOMPARE(buffer.size(), size);
    QCOMPARE(buffer.nextBlockSize(), size);
    QCOMPARE(chunkSizes(buffer), Sizes{chunk});
    QCOMPARE(buffer.head(), 0);
    QCOMPARE(buffer.tail(), size);
    QCOMPARE(buffer.tailIndex(), 0);
}

void tst_RingBuffer::reserveTakesRoomInTheChunk()
{
    RingBuffer buffer;
    append(buffer, pattern(Block - 3));
    const char *const begin = buffer.reserve(3);
    QCOMPARE(begin, buffer.nextBlock() + Block - 3);
    QCOMPARE(buffer.tail(), Block);
    QCOMPARE(buffer.size(), Block);
    QCOMPARE(chunkSizes(buffer), Sizes{Block});
}

void tst_RingBuffer::reserveGrowsAChunkInUseByLessThanHalf()
{
    RingBuffer buffer;
    const QByteArray first = pattern(Block / 2 - 1);
    const QByteArray second = pattern(Block, 7);
    append(buffer, first);
    append(buffer, second);
    QCOMPARE(chunkSizes(buffer), Sizes{first.size() + second.size()});
    QCOMPARE(buffer.tail(), first.size() + second.size());
    QCOMPARE(buffer.tailIndex(), 0);
    QCOMPARE(readAll(buffer), first + second);
}

void tst_RingBuffer::reserveAppendsAChunkToOneInUseByHalf()
{
    RingBuffer buffer;
    const QByteArray first = pattern(Block / 2);
    const QByteArray second = pattern(Block / 2 + 1, 7);
    append(buffer, first);
    append(buffer, second);
    QCOMPARE(chunkSizes(buffer), (Sizes{Block / 2, Block}));
    QCOMPARE(buffer.tail(), Block / 2 + 1);
    QCOMPARE(buffer.tailIndex(), 1);
    QCOMPARE(buffer.nextBlockSize(), Block / 2);
    QCOMPARE(readAll(buffer), first + second);
}

void tst_RingBuffer::appendedChunkIsAsLargeAsAsked()
{
    RingBuffer buffer;
    append(buffer, pattern(Block));
    append(buffer, pattern(Block + 5));
    QCOMPARE(chunkSizes(buffer), (Sizes{Block, Block + 5}));
    QCOMPARE(buffer.size(), 2 * Block + 5);
}

void tst_RingBuffer::freeMovesTheHead()
{
    RingBuffer buffer;
    append(buffer, pattern(10));
    buffer.free(4);
    QCOMPARE(buffer.size(), 6);
    QCOMPARE(buffer.head(), 4);
    QCOMPARE(buffer.tail(), 10);
    QCOMPARE(readAll(buffer), pattern(10).mid(4));
}

void tst_RingBuffer::freeRemovesUsedUpChunks()
{
    RingBuffer buffer;
    append(buffer, pattern(Block));
    append(buffer, pattern(Block));
    append(buffer, pattern(Block));
    buffer.free(Block);
    QCOMPARE(chunkSizes(buffer), (Sizes{Block, Block}));
    QCOMPARE(buffer.head(), 0);
    QCOMPARE(buffer.tailIndex(), 1);
    buffer.free(Block + 9);
    QCOMPARE(chunkSizes(buffer), Sizes{Block});
    QCOMPARE(buffer.head(), 9);
    QCOMPARE(buffer.tailIndex(), 0);
    QCOMPARE(buffer.size(), Block - 9);
    QCOMPARE(readAll(buffer), pattern(Block).mid(9));
}

void tst_RingBuffer::freeOfAllBringsTheChunkBackToTheBlock_data()
{
    QTest::addColumn<qsizetype>("held");
    QTest::addColumn<qsizetype>("freed");
    QTest::newRow("small") << qsizetype(5) << qsizetype(5);
    QTest::newRow("large") << 3 * Block << 3 * Block;
    QTest::newRow("more than held") << qsizetype(5) << qsizetype(6);
}

void tst_RingBuffer::freeOfAllBringsTheChunkBackToTheBlock()
{
    QFETCH(qsizetype, held);
    QFETCH(qsizetype, freed);
    RingBuffer buffer;
    append(buffer, pattern(held));
    buffer.free(freed);
    QVERIFY(buffer.isEmpty());
    QCOMPARE(buffer.size(), 0);
    QCOMPARE(chunkSizes(buffer), Sizes{Block});
    QVERIFY(buffer.chunks().first().capacity() < 2 * Block);
    QCOMPARE(buffer.head(), 0);
    QCOMPARE(buffer.tail(), 0);
    QCOMPARE(buffer.tailIndex(), 0);
}

void tst_RingBuffer::chopMovesTheTail()
{
    RingBuffer buffer;
    append(buffer, pattern(10));
    buffer.chop(4);
    QCOMPARE(buffer.size(), 6);
    QCOMPARE(buffer.head(), 0);
    QCOMPARE(buffer.tail(), 6);
    QCOMPARE(readAll(buffer), pattern(6));
}

void tst_RingBuffer::chopRemovesUsedUpChunks()
{
    RingBuffer buffer;
    append(buffer, pattern(Block - 1));
    append(buffer, pattern(Block, 3));
    append(buffer, pattern(Block, 5));
    buffer.chop(Block);
    QCOMPARE(chunkSizes(buffer), (Sizes{Block - 1, Block}));
    QCOMPARE(buffer.tail(), Block);
    QCOMPARE(buffer.tailIndex(), 1);
    buffer.chop(Block + 9);
    QCOMPARE(chunkSizes(buffer), Sizes{Block - 1});
    QCOMPARE(buffer.tail(), Block - 10);
    QCOMPARE(buffer.tailIndex(), 0);
    QCOMPARE(readAll(buffer), pattern(Block - 10));
}

void tst_RingBuffer::chopOfAllEmpties_data()
{
    QTest::addColumn<qsizetype>("chopped");
    QTest::newRow("all") << 2 * Block;
    QTest::newRow("more than held") << 2 * Block + 1;
}

void tst_RingBuffer::chopOfAllEmpties()
{
    QFETCH(qsizetype, chopped);
    RingBuffer buffer;
    append(buffer, pattern(Block));
    append(buffer, pattern(Block));
    buffer.chop(chopped);
    QVERIFY(buffer.isEmpty());
    QCOMPARE(buffer.nextBlockSize(), 0);
    QCOMPARE(chunkSizes(buffer), Sizes{Block});
    QCOMPARE(buffer.tailIndex(), 0);
}

void tst_RingBuffer::reserveAndChopLeavesTheBytesBefore()
{
    RingBuffer buffer;
    const QByteArray held = pattern(Block - 2);
    append(buffer, held);
    std::memset(buffer.reserve(2 * Block), 'x', static_cast<size_t>(2 * Block));
    buffer.chop(2 * Block);
    QCOMPARE(buffer.size(), held.size());
    append(buffer, pattern(3));
    QCOMPARE(readAll(buffer), held + pattern(3));
}

void tst_RingBuffer::clearKeepsOneChunkWithoutMemory()
{
    RingBuffer buffer;
    append(buffer, pattern(Block));
    append(buffer, pattern(Block));
    buffer.free(3);
    buffer.clear();
    QVERIFY(buffer.isEmpty());
    QCOMPARE(chunkSizes(buffer), Sizes{0});
    QCOMPARE(buffer.chunks().first().capacity(), 0);
    QCOMPARE(buffer.head(), 0);
    QCOMPARE(buffer.tail(), 0);
    QCOMPARE(buffer.tailIndex(), 0);
    append(buffer, "after"_ba);
    QCOMPARE(readAll(buffer), "after"_ba);
}

void tst_RingBuffer::steadyExchangeKeepsItsMemory()
{
    RingBuffer buffer;
    append(buffer, pattern(9));
    const char *const memory = buffer.nextBlock();
    for (int i = 0; i < 10000; ++i) {
        QCOMPARE(readAll(buffer).size(), 9);
        append(buffer, pattern(9));
        QCOMPARE(buffer.nextBlock(), memory);
    }
}

void tst_RingBuffer::readInPieces_data()
{
    QTest::addColumn<qsizetype>("piece");
    QTest::newRow("one byte") << qsizetype(1);
    QTest::newRow("nine bytes") << qsizetype(9);
    QTest::newRow("over the edge of a chunk") << Block - 1;
    QTest::newRow("more than is held") << 10 * Block;
}

void tst_RingBuffer::readInPieces()
{
    QFETCH(qsizetype, piece);
    RingBuffer buffer;
    QByteArray expected;
    for (int i = 0; i < 3; ++i) {
        const QByteArray part = pattern(Block - 7, i);
        append(buffer, part);
        expected += part;
    }
    QVERIFY(buffer.chunks().size() > 1);
    QByteArray all;
    while (!buffer.isEmpty()) {
        QByteArray part(piece, '\0');
        const qsizetype count = buffer.read(part.data(), piece);
        QCOMPARE(count, qMin(piece, expected.size() - all.size()));
        all += part.first(count);
    }
    QCOMPARE(all, expected);
}

void tst_RingBuffer::readOfNothing()
{
    RingBuffer buffer;
    char byte = 'x';
    QCOMPARE(buffer.read(&byte, 1), 0);
    append(buffer, "a"_ba);
    QCOMPARE(buffer.read(&byte, 0), 0);
    QCOMPARE(byte, 'x');
    QCOMPARE(buffer.size(), 1);
}

void tst_RingBuffer::containsLooksAtHeldBytesOnly()
{
    RingBuffer buffer;
    QVERIFY(!buffer.contains('\n'));
    append(buffer, "\nab"_ba);
    QVERIFY(buffer.contains('\n'));
    buffer.free(1);
    QVERIFY(!buffer.contains('\n'));
    append(buffer, "\n"_ba);
    QVERIFY(buffer.contains('\n'));
    buffer.chop(1);
    QVERIFY(!buffer.contains('\n'));
    append(buffer, QByteArray(Block, 'x'));
    append(buffer, QByteArray(Block, 'y') + '\n');
    QVERIFY(buffer.chunks().size() > 1);
    QVERIFY(buffer.contains('\n'));
}

void tst_RingBuffer::longRunKeepsOrder()
{
    RingBuffer buffer;
    QByteArray held;
    int next = 0;
    for (int i = 0; i < 400; ++i) {
        const QByteArray part = pattern((i * 7919) % (Block + Block / 2), next);
        next = static_cast<int>((next + part.size()) % 251);
        append(buffer, part);
        held += part;
        QByteArray taken((i * 6007) % (2 * Block), '\0');
        const qsizetype count = buffer.read(taken.data(), taken.size());
        QCOMPARE(taken.first(count), held.first(qMin(taken.size(), held.size())));
        held.remove(0, count);
        QCOMPARE(buffer.size(), held.size());
        QCOMPARE(buffer.tailIndex(), buffer.chunks().size() - 1);
    }
    QCOMPARE(readAll(buffer), held);
}

QTEST_GUILESS_MAIN(tst_RingBuffer)
#include "tst_RingBuffer.moc"
