// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT
//
// Inputs and outputs of an FA-M3: X00217 is terminal 17 of the module in slot 2 of unit 0. A slot has terminals 1 to
// 64, and a run of bits continues in the next slot, then in the next unit. No rule can describe this. Words are 16
// terminals from 1, 17, 33 or 49 on. New addresses have as many digits as the given one.

var terminalsPerSlot = 64;
var terminalsPerWord = 16;
var slotsPerUnit = 16;
var unitCount = 8;
// The processor is in slot 1 of unit 0.
var firstPlace = terminalsPerSlot;
var lastPlace = unitCount * slotsPerUnit * terminalsPerSlot - 1;

// The number of an address counts terminals, so the next word is 16 numbers later, and the next slot 100. All words
// therefore begin at a multiple of 4, plus 1; the pattern decides which of these begin words.
function init() {
    bitBase = 10;
    needOptimize = false;
    needAligment = true;
    aligmentSize = 4;
    canConvertToRegister = true;
    addressStartPos = 1;
}

// Null if the text is not the address of a terminal. The station ends at the first "-", the device address at the
// second. The place counts all terminals from 0.
function parse(address) {
    var parts = String(address).split("-");
    var hasStation = parts.length > 1;
    var match = /^([XYxy])(\d+)$/.exec(hasStation ? parts[1] : parts[0]);
    if (!match)
        return null;
    var number = parseInt(match[2], 10);
    var terminal = number % 100;
    var slot = Math.floor(number / 100) % 100;
    var unit = Math.floor(number / 10000);
    var place = (unit * slotsPerUnit + slot - 1) * terminalsPerSlot + terminal - 1;
    if (terminal < 1 || terminal > terminalsPerSlot || slot < 1 || slot > slotsPerUnit)
        return null;
    if (place < firstPlace || place > lastPlace)
        return null;
    return {
        symbol: (hasStation ? parts[0] + "-" : "") + match[1],
        width: match[2].length,
        number: number,
        place: place
    };
}

function numberAt(place) {
    var slot = Math.floor(place / terminalsPerSlot);
    var unit = Math.floor(slot / slotsPerUnit);
    return unit * 10000 + (slot % slotsPerUnit + 1) * 100 + place % terminalsPerSlot + 1;
}

function addressAt(parsed, place) {
    var digits = String(numberAt(place));
    while (digits.length < parsed.width)
        digits = "0" + digits;
    return parsed.symbol + digits;
}

function getAddressRange(address) {
    var parsed = parse(address);
    return parsed ? parsed.number : -1;
}

function bitoffset(address) {
    var parsed = parse(address);
    return parsed ? parsed.place % terminalsPerWord : -1;
}

function convertToRegisterAddress(address) {
    var parsed = parse(address);
    return parsed ? addressAt(parsed, parsed.place - parsed.place % terminalsPerWord) : "";
}

function makeBitContinueCommand(address, count, step) {
    var run = [];
    var parsed = parse(address);
    if (!parsed)
        return run;
    var place = parsed.place;
    for (var i = 0; i < count; ++i) {
        if (place >= firstPlace && place <= lastPlace)
            run.push(addressAt(parsed, place));
        else if (step >= 0 ? place > lastPlace : place < firstPlace)
            break;
        place += step;
    }
    return run;
}
