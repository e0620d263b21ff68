// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT
//
// Input and output bits of a PLC-5: I:017/17. Word and bit are octal and a word has 16 bits, so that I:017/17 is
// followed by I:020/00, which no rule can say. New addresses are as wide as the one that they come from.

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

// Null when the text is no address of an input or output bit. The station goes up to the first "-", the device address
// to the second.
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

// Numbers that the host cannot hold become the largest that it can, so that it finds them out of range.
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
