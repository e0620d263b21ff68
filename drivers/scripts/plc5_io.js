// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT
//
// Input and output bits of a PLC-5: I:017/17. Word and bit are octal and a word has 16 bits, so I:017/17 is followed by
// I:020/00. No rule can describe this. New addresses have as many digits as the given one.

var bitsPerWord = 16;
var lastBit = parseInt("277", 8) * bitsPerWord + bitsPerWord - 1;

function init() {
    bitBase = 8;
    needOptimize = false;
    needAligment = false;
    aligmentSize = 1;
    canConvertToRegister = true;
    addressStartPos = 0;
}

// Null if the text is not the address of an input or output bit. The station ends at the first "-", the device address
// at the second.
function parse(address) {
    var parts = String(address).split("-");
    var hasStation = parts.length > 1;
    var match = /^(O0?:|I1?:)([0-7]+)\/(1[0-7]|0?[0-7])$/.exec(hasStation ? parts[1] : parts[0]);
    if (!match)
        return null;
    return {
        file: (hasStation ? parts[0] + "-" : "") + match[1],
        wordText: match[2],
        bitText: match[3],
        word: parseInt(match[2], 8),
        bit: parseInt(match[3], 8)
    };
}

function octal(number, width) {
    var text = number.toString(8);
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
    return parsed ? parsed.file + parsed.wordText : "";
}

function makeBitContinueCommand(address, count, step) {
    var run = [];
    var parsed = parse(address);
    if (!parsed)
        return run;
    var position = parsed.word * bitsPerWord + parsed.bit;
    for (var i = 0; i < count; ++i) {
        if (position >= 0 && position <= lastBit) {
            run.push(parsed.file + octal(Math.floor(position / bitsPerWord), parsed.wordText.length) + "/" +
                     octal(position % bitsPerWord, parsed.bitText.length));
        } else if (step >= 0 ? position > lastBit : position < 0) {
            break;
        }
        position += step;
    }
    return run;
}
