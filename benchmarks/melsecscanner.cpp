// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "benchmarks/melsecscanner.h"

namespace {

enum class Bits {
    None,   ///< a register
    Single, ///< each number is a bit of its own
    Of16,   ///< 16 numbers make a word
    Behind, ///< a register that may have "." and a bit behind it
    Word,   ///< a register of 16 bits; its number is a multiple of 16
};

struct Area
{
    const char *name;
    int last;
    bool isHexadecimal;
    Bits bits;
};

constexpr Area inputs{"X", 0x1FFF, true, Bits::Of16};
constexpr Area outputs{"Y", 0x1FFF, true, Bits::Of16};
constexpr Area relays{"M", 61439, false, Bits::Of16};
constexpr Area latches{"L", 32767, false, Bits::Of16};
constexpr Area annunciators{"F", 32767, false, Bits::Of16};
constexpr Area edges{"V", 32767, false, Bits::Of16};
constexpr Area steps{"S", 8191, false, Bits::Of16};
constexpr Area links{"B", 0xEFFF, true, Bits::Of16};
constexpr Area specialLinks{"SB", 0x7FFF, true, Bits::Of16};
constexpr Area specialRelays{"SM", 2047, false, Bits::Of16};
constexpr Area inputWords{"K4X", 0x1FF0, true, Bits::Word};
constexpr Area outputWords{"K4Y", 0x1FF0, true, Bits::Word};
constexpr Area relayWords{"K4M", 61424, false, Bits::Word};
constexpr Area latchWords{"K4L", 32752, false, Bits::Word};
constexpr Area annunciatorWords{"K4F", 32752, false, Bits::Word};
constexpr Area edgeWords{"K4V", 32752, false, Bits::Word};
constexpr Area stepWords{"K4S", 8176, false, Bits::Word};
constexpr Area linkWords{"K4B", 0xEFF0, true, Bits::Word};
constexpr Area specialLinkWords{"K4SB", 0x7FF0, true, Bits::Word};
constexpr Area specialRelayWords{"K4SM", 2032, false, Bits::Word};
constexpr Area data{"D", 4910079, false, Bits::Behind};
constexpr Area linkRegisters{"W", 0x4AEBFF, true, Bits::Behind};
constexpr Area files{"R", 32767, false, Bits::Behind};
constexpr Area countedFiles{"ZR", 4849663, false, Bits::Behind};
constexpr Area specialData{"SD", 2047, false, Bits::Behind};
constexpr Area specialLinkRegisters{"SW", 0x7FFF, true, Bits::Behind};
constexpr Area indexes{"Z", 19, false, Bits::None};
constexpr Area timerContacts{"TS", 32767, false, Bits::Single};
constexpr Area timerCoils{"TC", 32767, false, Bits::Single};
constexpr Area timers{"TN", 32767, false, Bits::None};
constexpr Area retentiveContacts{"STS", 32767, false, Bits::Single};
constexpr Area retentiveCoils{"STC", 32767, false, Bits::Single};
constexpr Area retentiveTimers{"STN", 32767, false, Bits::None};
constexpr Area counterContacts{"CS", 32767, false, Bits::Single};
constexpr Area counterCoils{"CC", 32767, false, Bits::Single};
constexpr Area counters{"CN", 32767, false, Bits::None};

/// A cursor over the code units of an address; 0 is read behind the end.
struct Cursor
{
    const char16_t *at;
    const char16_t *end;

    bool isAtEnd() const { return at == end; }
    unsigned unit() const { return at == end ? 0 : *at; }
    /// ASCII letters as small ones.
    unsigned letter() const { return unit() | 0x20; }
    const Area *take(int letters, const Area &area)
    {
        at += letters;
        return &area;
    }
};

/// Behind "S", "T" and the like: contact, coil or value of a timer or counter.
const Area *itemOf(Cursor &text, const Area &contact, const Area &coil, const Area &value)
{
    switch (text.letter()) {
    case 's':
        return text.take(1, contact);
    case 'c':
        return text.take(1, coil);
    case 'n':
        return text.take(1, value);
    default:
        return &contact;
    }
}

const Area *specialArea(Cursor &text)
{
    switch (text.letter()) {
    case 'b':
        return text.take(1, specialLinks);
    case 'm':
        return text.take(1, specialRelays);
    case 'd':
        return text.take(1, specialData);
    case 'w':
        return text.take(1, specialLinkRegisters);
    case 't':
        ++text.at;
        return itemOf(text, retentiveContacts, retentiveCoils, retentiveTimers);
    case 's':
        return text.take(1, retentiveContacts);
    case 'c':
        return text.take(1, retentiveCoils);
    case 'n':
        return text.take(1, retentiveTimers);
    default:
        return &steps;
    }
}

const Area *wordOfBits(Cursor &text)
{
    if (text.unit() != '4')
        return nullptr;
    ++text.at;
    const unsigned letter = text.letter();
    if (text.isAtEnd())
        return nullptr;
    ++text.at;
    switch (letter) {
    case 'x':
        return &inputWords;
    case 'y':
        return &outputWords;
    case 'm':
        return &relayWords;
    case 'l':
        return &latchWords;
    case 'f':
        return &annunciatorWords;
    case 'v':
        return &edgeWords;
    case 'b':
        return &linkWords;
    case 's':
        if (text.letter() == 'b')
            return text.take(1, specialLinkWords);
        return text.letter() == 'm' ? text.take(1, specialRelayWords) : &stepWords;
    default:
        return nullptr;
    }
}

const Area *areaOf(Cursor &text)
{
    if (text.isAtEnd())
        return nullptr;
    const unsigned letter = text.letter();
    ++text.at;
    switch (letter) {
    case 'x':
        return &inputs;
    case 'y':
        return &outputs;
    case 'm':
        return &relays;
    case 'l':
        return &latches;
    case 'f':
        return &annunciators;
    case 'v':
        return &edges;
    case 'b':
        return &links;
    case 'd':
        return &data;
    case 'w':
        return &linkRegisters;
    case 'r':
        return &files;
    case 'z':
        return text.letter() == 'r' ? text.take(1, countedFiles) : &indexes;
    case 's':
        return specialArea(text);
    case 't':
        return itemOf(text, timerContacts, timerCoils, timers);
    case 'c':
        return itemOf(text, counterContacts, counterCoils, counters);
    case 'k':
        return wordOfBits(text);
    default:
        return nullptr;
    }
}

/// The value of a hexadecimal digit; 16 for another character.
unsigned hexadecimalDigit(unsigned unit)
{
    if (unit - '0' < 10)
        return unit - '0';
    const unsigned letter = (unit | 0x20) - 'a';
    return letter < 6 ? letter + 10 : 16;
}

/// Reads digits; -1 when there is none, or when they make more than `last`.
int readNumber(Cursor &text, const Area &area)
{
    const char16_t *const first = text.at;
    int number = 0;
    if (area.isHexadecimal) {
        for (; text.at != text.end; ++text.at) {
            const unsigned digit = hexadecimalDigit(*text.at);
            if (digit > 15)
                break;
            number = number * 16 + static_cast<int>(digit);
            if (number > area.last)
                return -1;
        }
    } else {
        for (; text.at != text.end; ++text.at) {
            const unsigned digit = *text.at - unsigned('0');
            if (digit > 9)
                break;
            number = number * 10 + static_cast<int>(digit);
            if (number > area.last)
                return -1;
        }
    }
    return text.at == first ? -1 : number;
}

/// Reads what follows the number; false for an address that is refused.
bool readBit(Cursor &text, const Area &area, ScannedAddress &scanned)
{
    switch (area.bits) {
    case Bits::None:
        break;
    case Bits::Single:
        scanned.bit = 0;
        break;
    case Bits::Of16:
        scanned.bit = scanned.number & 15;
        break;
    case Bits::Word:
        return text.isAtEnd() && (scanned.number & 15) == 0;
    case Bits::Behind:
        if (text.unit() == '.') {
            ++text.at;
            const unsigned bit = hexadecimalDigit(text.unit());
            if (bit > 15)
                return false;
            ++text.at;
            scanned.bit = static_cast<int>(bit);
        }
        break;
    }
    return text.isAtEnd();
}

/// Reads "3-"; false for digits without a "-".
bool readStation(Cursor &text, int &station)
{
    if (text.unit() - '0' > 9)
        return true;
    station = 0;
    for (; text.unit() - '0' < 10 && station < 100000; ++text.at)
        station = station * 10 + static_cast<int>(text.unit() - '0');
    const bool isStation = text.unit() == '-';
    ++text.at;
    return isStation;
}

} // namespace

ScannedAddress scanMelsecAddress(QStringView address)
{
    Cursor text{address.utf16(), address.utf16() + address.size()};
    ScannedAddress scanned;
    if (!readStation(text, scanned.station))
        return {};
    const Area *const area = areaOf(text);
    if (!area)
        return scanned;
    scanned.number = readNumber(text, *area);
    if (scanned.number >= 0 && readBit(text, *area, scanned)) {
        scanned.area = area->name;
        return scanned;
    }
    scanned.number = -1;
    scanned.bit = -1;
    return scanned;
}
