// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT
//
// Relays of an FP controller: X1F is bit F of word 1, R901C is bit C of word 901, and X5 is bit 5 of word 0. The word
// is decimal and the bit one hexadecimal digit, so X9F is followed by X100. A rule can describe this for two digits and
// more, but word 0 has no digit.

var bitsPerWord = 16;

// First and last word of each kind. The special relays have separate numbers.
var areas = {
    X: [[0, 127]],
    Y: [[0, 127]],
    R: [[0, 886], [900, 911]],
    L: [[0, 639]]
};

function init() {
    bitBase = 16;
    needOptimize = false;
    needAligment = false;
    aligmentSize = 1;
    canConvertToRegister = true;
    addressStartPos = 0;
}

// Null if the text is not a relay. The station ends at the first "-", the device address at the second.
function parse(address) {
    var parts = String(address).split("-");
    var hasStation = parts.length > 1;
    var match = /^([XYRL])(\d*)([0-9A-F])$/i.exec(hasStation ? parts[1] : parts[0]);
    if (!match)
        return null;
    return {
        station: hasStation ? parts[0] + "-" : "",
        letter: match[1],
        kind: match[1].toUpperCase(),
        word: match[2] === "" ? 0 : parseInt(match[2], 10),
        bit: parseInt(match[3], 16)
    };
}

// The area that contains the word, null if there is none.
function areaOf(kind, word) {
    for (var i = 0; i < areas[kind].length; ++i) {
        var area = areas[kind][i];
        if (area[0] <= word && word <= area[1])
            return area;
    }
    return null;
}

function relay(position) {
    var word = Math.floor(position / bitsPerWord);
    return (word === 0 ? "" : String(word)) + (position % bitsPerWord).toString(16).toUpperCase();
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
    return parsed ? parsed.station + "W" + parsed.kind + parsed.word : "";
}

// A run stays in the area in which it begins.
function makeBitContinueCommand(address, count, step) {
    var run = [];
    var parsed = parse(address);
    var area = parsed ? areaOf(parsed.kind, parsed.word) : null;
    if (!area)
        return run;
    var first = area[0] * bitsPerWord;
    var last = area[1] * bitsPerWord + bitsPerWord - 1;
    var position = parsed.word * bitsPerWord + parsed.bit;
    for (var i = 0; i < count && first <= position && position <= last; ++i) {
        run.push(parsed.station + parsed.letter + relay(position));
        position += step;
    }
    return run;
}
