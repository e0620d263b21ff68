// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT
//
// Bits of the banks of extended data memory: EA_100.05 is bit 5 of word 100 of bank 10. One row serves all banks, and a
// rule would use the words of only one. New addresses keep the bank and have as many digits as the given one.

var bitsPerWord = 16;
var lastWord = 32767;
var lastBit = lastWord * bitsPerWord + bitsPerWord - 1;

function init() {
    bitBase = 10;
    needOptimize = false;
    needAligment = false;
    aligmentSize = 1;
    canConvertToRegister = true;
    addressStartPos = 0;
}

// Null if the text is not the address of such a bit. The station ends at the first "-", the device address at the
// second.
function parse(address) {
    var parts = String(address).split("-");
    var hasStation = parts.length > 1;
    var match = /^([Ee](?:0?[0-9A-Fa-f]|1[0-8])_)(\d+)\.(1[0-5]|0?\d)$/.exec(hasStation ? parts[1] : parts[0]);
    if (!match)
        return null;
    return {
        bank: (hasStation ? parts[0] + "-" : "") + match[1],
        wordText: match[2],
        bitText: match[3],
        word: parseInt(match[2], 10),
        bit: parseInt(match[3], 10)
    };
}

function digits(number, width) {
    var text = String(number);
    while (text.length < width)
        text = "0" + text;
    return text;
}

// Numbers that are too large become the host's largest number, which is out of range.
function getAddressRange(address) {
    var parsed = parse(address);
    return parsed ? Math.min(parsed.word, 0x7fffffff) : -1;
}

function bitoffset(address) {
    var parsed = parse(address);
    return parsed ? parsed.bit : -1;
}

function convertToRegisterAddress(address) {
    var parsed = parse(address);
    return parsed ? parsed.bank + parsed.wordText : "";
}

function makeBitContinueCommand(address, count, step) {
    var run = [];
    var parsed = parse(address);
    if (!parsed)
        return run;
    var position = parsed.word * bitsPerWord + parsed.bit;
    for (var i = 0; i < count; ++i) {
        if (position >= 0 && position <= lastBit) {
            run.push(parsed.bank + digits(Math.floor(position / bitsPerWord), parsed.wordText.length) + "." +
                     digits(position % bitsPerWord, parsed.bitText.length));
        } else if (step >= 0 ? position > lastBit : position < 0) {
            break;
        }
        position += step;
    }
    return run;
}
