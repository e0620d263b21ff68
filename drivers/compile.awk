# SPDX-FileCopyrightText: the zelmar_label authors
# SPDX-License-Identifier: MIT
#
# Turns driver files into the SQL that makes the driver database. All errors of all files are told, then it fails.

function fail(file, line, text) {
    printf "%s:%d: error: %s\n", file, line, text > "/dev/stderr"
    failed = 1
}

function quoted(text) {
    gsub(/'/, "''", text)
    return "'" text "'"
}

function isNumber(text) {
    return text ~ /^[0-9]+$/
}

function startFile() {
    finishFile()
    file = FILENAME
    ++filesSeen
    stem = file
    sub(/^.*\//, "", stem)
    sub(/\.tsv$/, "", stem)
    if (stem !~ /^[a-z][a-z0-9_]*$/)
        fail(file, 1, "the file name has to be lower-case letters, digits and '_', for it names the tables")
    else if (stem in stems)
        fail(file, 1, "the file name stands already in " stems[stem])
    stems[stem] = file
    split("", settings)
    split("", place)
    split("", patterns)
    split("", descriptions)
    headerLine = 0
    rows = 0
}

function finishFile() {
    if (file == "")
        return
    if (!headerLine)
        fail(file, lastLine, "no header line")
    else if (!rows)
        fail(file, lastLine, "no rows")
}

# "name<TAB>value" in front of the header.
function readSetting() {
    if (NF != 2) {
        fail(file, FNR, NF " columns where a setting has 2")
        return
    }
    if (!($1 in settingNames)) {
        fail(file, FNR, "unknown header '" $1 "'")
        return
    }
    if ($1 in settings)
        fail(file, FNR, "'" $1 "' stands twice")
    if ($2 == "")
        fail(file, FNR, "'" $1 "' is empty")
    else if ($1 != "driver" && !isNumber($2))
        fail(file, FNR, "'" $1 "' is no number: '" $2 "'")
    if ($1 == "driver") {
        if ($2 in drivers)
            fail(file, FNR, "driver '" $2 "' stands already in " drivers[$2])
        drivers[$2] = file ":" FNR
    }
    settings[$1] = $2
}

function readHeader(    i) {
    headerLine = FNR
    for (i = 1; i <= NF; ++i) {
        if (!($i in isColumn))
            fail(file, FNR, "unknown header '" $i "'")
        else if ($i in place)
            fail(file, FNR, "header '" $i "' stands twice")
        place[$i] = i
    }
    for (i = 1; i <= columnCount; ++i)
        if (!(columns[i] in place))
            fail(file, FNR, "header '" columns[i] "' is missing")
    for (i in settingNames)
        if (!(i in settings))
            fail(file, FNR, "'" i "' has to stand before the header")
    headerColumns = NF
    if (failed)
        return
    print "INSERT INTO table_index VALUES (" quoted(settings["driver"]) ", '" stem "_general', '" stem "_types');"
    print "CREATE TABLE " stem "_general (block_size INTEGER, bit_block_size INTEGER);"
    print "INSERT INTO " stem "_general VALUES (" settings["block_size"] ", " settings["bit_block_size"] ");"
    print "CREATE TABLE " stem "_types (" definitions ");"
}

function readRow(    i, name, value, values) {
    ++rows
    if (NF != headerColumns) {
        fail(file, FNR, NF " columns where the header has " headerColumns)
        return
    }
    for (i = 1; i <= columnCount; ++i) {
        name = columns[i]
        if (!(name in place))
            return
        value = $place[name]
        if (value == "" && !(name in mayBeEmpty))
            fail(file, FNR, "'" name "' is empty")
        else if (isColumn[name] == "INTEGER" && !isNumber(value))
            fail(file, FNR, "'" name "' is no number: '" value "'")
        values = values (i > 1 ? ", " : "") (isColumn[name] == "INTEGER" ? value : quoted(value))
    }
    checkRow()
    if (!failed)
        print "INSERT INTO " stem "_types VALUES (" values ");"
}

function checkRow(    pattern, description) {
    pattern = $place["pattern"]
    if (pattern in patterns)
        fail(file, FNR, "the pattern stands already in line " patterns[pattern])
    patterns[pattern] = FNR
    description = $place["description"]
    if (description in descriptions)
        fail(file, FNR, "the description stands already in line " descriptions[description])
    descriptions[description] = FNR
    if ($place["type"] !~ /^[0-5]$/)
        fail(file, FNR, "'type' is not 0 to 5: '" $place["type"] "'")
    if ($place["base"] !~ /^(8|10|16)$/)
        fail(file, FNR, "'base' is not 8, 10 or 16: '" $place["base"] "'")
    if ($place["blocksize"] == 0)
        fail(file, FNR, "'blocksize' is 0: at least one unit has to fit into a block")
    if ($place["continue"] !~ /^[YN]$/)
        fail(file, FNR, "'continue' is neither Y nor N: '" $place["continue"] "'")
}

BEGIN {
    columnCount = split("pattern type address_group_index description prefix_symbol start end data_size multiple_rule " \
                        "catch_table base blocksize continue", columns, " ")
    for (i = 1; i <= columnCount; ++i) {
        isColumn[columns[i]] = "TEXT"
    }
    isColumn["type"] = isColumn["address_group_index"] = isColumn["data_size"] = "INTEGER"
    isColumn["base"] = isColumn["blocksize"] = "INTEGER"
    for (i = 1; i <= columnCount; ++i)
        definitions = definitions (i > 1 ? ", " : "") "\"" columns[i] "\" " isColumn[columns[i]]
    mayBeEmpty["prefix_symbol"] = mayBeEmpty["multiple_rule"] = mayBeEmpty["catch_table"] = 1
    settingNames["driver"] = settingNames["block_size"] = settingNames["bit_block_size"] = 1
    for (i = 1; i < ARGC; ++i)
        fileNames[i] = ARGV[i]
    fileCount = ARGC - 1

    print "BEGIN;"
    print "CREATE TABLE table_index (name TEXT, general_table TEXT, device_table TEXT);"
}

FNR == 1 { startFile() }
{ lastLine = FNR }
/\r/ {
    fail(file, FNR, "carriage return")
    next
}
/^#/ || /^$/ { next }
headerLine {
    readRow()
    next
}
$1 == "pattern" || NF > 2 {
    readHeader()
    next
}
{ readSetting() }

END {
    finishFile()
    # A file without a single line is never met above.
    for (i = 1; i <= fileCount; ++i) {
        name = fileNames[i]
        if ((getline line < name) <= 0)
            fail(name, 1, "empty file")
    }
    print "COMMIT;"
    exit failed
}
