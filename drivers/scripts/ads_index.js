// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT
//
// Bits by index group and index offset, each hexadecimal after "0x" or decimal. There are two forms: byte and bit in
// the group of the bytes, as in 0x4020:0x10.3, or the index of the bit in its own group, as in 0x4021:0x83. Both are
// bit 3 of byte 0x10, and the host gets this number and bit.

var bitsPerByte = 8;
var lastByte = 0xfffffff;
var lastBit = lastByte * bitsPerByte + bitsPerByte - 1;

// Groups in which the offset counts bytes.
var byteGroups = [0x4020, 0x4030, 0x4040, 0xf020, 0xf030];
// Groups in which the offset counts bits; each is the group of its bytes plus 1.
var bitGroups = [0x4021, 0xf021, 0xf031];

function init() {
    bitBase = 8;
    needOptimize = false;
    needAligment = false;
    aligmentSize = 1;
    canConvertToRegister = true;
    addressStartPos = 0;
}

// The number and the radix of "0x10" and "16"; null if the text is not a number.
function parseNumber(text) {
    var match = /^(?:(0x)([0-9a-f]+)|(\d+))$/i.exec(text);
    if (!match)
        return null;
    return match[1] ? { radix: 16, value: parseInt(match[2], 16), mark: match[1] }
                    : { radix: 10, value: parseInt(match[3], 10), mark: "" };
}

// Null if the text is not a bit. The station ends at the first "-", the device address at the second.
function parse(address) {
    var parts = String(address).split("-");
    var hasStation = parts.length > 1;
    var match = /^([0-9a-fx]+):([0-9a-fx]+)(?:\.([0-7]))?$/i.exec(hasStation ? parts[1] : parts[0]);
    if (!match)
        return null;
    var group = parseNumber(match[1]);
    var offset = parseNumber(match[2]);
    if (!group || !offset)
        return null;
    var hasBit = match[3] !== undefined && match[3] !== "";
    if ((hasBit ? byteGroups : bitGroups).indexOf(group.value) < 0)
        return null;
    return {
        station: hasStation ? parts[0] + "-" : "",
        groupText: match[1],
        byteGroup: hasBit ? group.value : group.value - 1,
        groupRadix: group.radix,
        offsetMark: offset.mark,
        offsetRadix: offset.radix,
        hasBit: hasBit,
        position: hasBit ? offset.value * bitsPerByte + parseInt(match[3], 8) : offset.value
    };
}

function byteOf(position) {
    return Math.floor(position / bitsPerByte);
}

// Groups are in upper case, as in the manual, and offsets in lower case, like the host's numbers.
function groupText(group, radix) {
    return radix === 16 ? "0x" + group.toString(16).toUpperCase() : String(group);
}

function offsetText(offset, radix) {
    return radix === 16 ? "0x" + offset.toString(16) : String(offset);
}

// Numbers that are too large become the host's largest number, which is out of range.
function getAddressRange(address) {
    var parsed = parse(address);
    return parsed ? Math.min(byteOf(parsed.position), 0x7fffffff) : -1;
}

function bitoffset(address) {
    var parsed = parse(address);
    return parsed ? parsed.position % bitsPerByte : -1;
}

function convertToRegisterAddress(address) {
    var parsed = parse(address);
    if (!parsed)
        return "";
    return parsed.station + groupText(parsed.byteGroup, parsed.groupRadix) + ":" +
           offsetText(byteOf(parsed.position), parsed.offsetRadix);
}

function makeBitContinueCommand(address, count, step) {
    var run = [];
    var parsed = parse(address);
    if (!parsed)
        return run;
    var prefix = parsed.station + parsed.groupText + ":" + parsed.offsetMark;
    var position = parsed.position;
    for (var i = 0; i < count && 0 <= position && position <= lastBit; ++i) {
        if (parsed.hasBit)
            run.push(prefix + byteOf(position).toString(parsed.offsetRadix) + "." + position % bitsPerByte);
        else
            run.push(prefix + position.toString(parsed.offsetRadix));
        position += step;
    }
    return run;
}
