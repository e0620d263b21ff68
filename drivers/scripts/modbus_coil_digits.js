// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT
//
// Coils in digit notation: 00001 to 09999 and 000001 to 065536. The leading zeros are part of the notation, so 00009 is
// followed by 00010. Addresses that the host builds would lose them.

// The last coil by the number of digits.
var lastCoil = { 5: 9999, 6: 65536 };

function init() {
    bitBase = 10;
    needOptimize = true;
    needAligment = false;
    aligmentSize = 1;
    canConvertToRegister = false;
    addressStartPos = 0;
}

// Null if the text is not a coil. The station ends at the first "-", the device address at the second.
function parse(address) {
    var parts = String(address).split("-");
    var hasStation = parts.length > 1;
    var match = /^0\d{4,5}$/.exec(hasStation ? parts[1] : parts[0]);
    if (!match)
        return null;
    return {
        station: hasStation ? parts[0] + "-" : "",
        width: match[0].length,
        coil: parseInt(match[0], 10)
    };
}

function digits(number, width) {
    var text = String(number);
    while (text.length < width)
        text = "0" + text;
    return text;
}

function getAddressRange(address) {
    var parsed = parse(address);
    return parsed ? parsed.coil : -1;
}

// A coil is not part of a word.
function bitoffset(address) {
    return parse(address) ? 0 : -1;
}

function convertToRegisterAddress(address) {
    return "";
}

function makeBitContinueCommand(address, count, step) {
    var run = [];
    var parsed = parse(address);
    if (!parsed)
        return run;
    var coil = parsed.coil;
    var last = lastCoil[parsed.width];
    for (var i = 0; i < count; ++i) {
        if (coil >= 1 && coil <= last)
            run.push(parsed.station + digits(coil, parsed.width));
        else if (step >= 0 ? coil > last : coil < 1)
            break;
        coil += step;
    }
    return run;
}
