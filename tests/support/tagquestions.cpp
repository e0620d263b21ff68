// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/tagquestions.h"

#include <algorithm>
#include <array>

namespace threads {

namespace {

bool hasAll(QList<int> ids, const std::function<bool(int)> &belongs)
{
    std::sort(ids.begin(), ids.end());
    QList<int> expected;
    for (int id = 1; id <= tagCount; ++id) {
        if (belongs(id))
            expected.append(id);
    }
    return ids == expected;
}

bool isCommandOf(const CommunicatorCommand &command, const Tag &tag, const QString &address)
{
    return command.address == address && command.dataType == tag.commandType() && command.scanTime == 1 &&
           command.length == (tag.type() == 8 ? static_cast<quint64>(tag.scale()) : 1);
}

/// A word on a link with word rows: its id, and the next ones.
QStringList runOf(const Tag &tag, int count)
{
    QStringList run;
    for (int i = 0; i < count; ++i)
        run.append(tag.link() == 2 ? QStringLiteral("DB%1.DBW%2").arg(tag.id % 40 + 1).arg(tag.id + i)
                                   : QStringLiteral("D%1").arg(tag.id + i));
    return run;
}

Tag wordOn(Work &work)
{
    static const QList<int> links{2, 3};
    return work.onLink(work.random.pick(links));
}

/// An "UINT(16)" among the plain words.
Tag plainWord(Work &work)
{
    return Tag(48 * work.random.below(tagCount / 48) + 17);
}

/// An "INT(32)" among the plain words.
Tag plainDoubleWord(Work &work)
{
    return Tag(48 * work.random.below(tagCount / 48) + 21);
}

const std::vector<Operation> &lifecycleOperations()
{
    static const std::vector<Operation> operations{
        {"instance()", [](Work &work) { return TagSystem::instance() == work.tags; }},
        {"instance(key)", [](Work &work) { return TagSystem::instance(key) == work.tags; }},
        {"database", [](Work &work) { return work.tags->database().connectionName() == key; }},
        {"customTagTableName",
         [](Work &work) { return work.tags->customTagTableName() == QLatin1String("custom_tag_table"); }},
        {"getCustomTagTableAddressColumn", [](Work &work) { return work.tags->getCustomTagTableAddressColumn() == 5; }},
        {"isSystemID", [](Work &work) { return work.tags->isSystemID(20094) && !work.tags->isSystemID(21001); }},
        {"isRecipeID", [](Work &work) { return work.tags->isRecipeID(60000) && !work.tags->isRecipeID(60001); }},
        {"isNotNormalTag",
         [](Work &work) { return work.tags->isNotNormalTag(20011) && !work.tags->isNotNormalTag(work.any().id); }},
        {"getSystemTagType",
         [](Work &work) { return work.tags->getSystemTagType(20022) == 1 && work.tags->getSystemTagType(20010) == 0; }},
        {"getSystemTagDataType",
         [](Work &work) {
             return work.tags->getSystemTagDataType(20010) == 7 && work.tags->getSystemTagDataType(20072) == 8;
         }},
        {"isControlSystemTag",
         [](Work &work) { return work.tags->isControlSystemTag(20022) && !work.tags->isControlSystemTag(20201); }},
        {"numControlSystemTag", [](Work &work) { return work.tags->numControlSystemTag() == 13; }},
        {"numInforSystemTag", [](Work &work) { return work.tags->numInforSystemTag() == 28; }},
        {"a system id without a tag",
         [](Work &work) {
             // The first query for its data type adds an item; this must change no answer.
             const int id = 20300 + work.random.below(500);
             const QString name = work.tags->getTagNameById(id);
             return (name.isEmpty() || name == QLatin1String("s>invalid")) && work.tags->getDataTypeByID(id) == 5 &&
                    work.tags->getTagNameById(id) == QLatin1String("s>invalid") && !work.tags->isControlSystemTag(id) &&
                    work.tags->getSystemTagType(id) == 2;
         }},
    };
    return operations;
}

const std::vector<Operation> &nameOperations()
{
    static const std::vector<Operation> operations{
        {"isSystemTag",
         [](Work &work) {
             return work.tags->isSystemTag(QStringLiteral("s>x")) && !work.tags->isSystemTag(work.any().name());
         }},
        {"isRecipeTag",
         [](Work &work) {
             return work.tags->isRecipeTag(QStringLiteral("R>1")) && !work.tags->isRecipeTag(work.any().name());
         }},
        {"isNewTag",
         [](Work &work) {
             return !work.tags->isNewTag(work.any().name()) && work.tags->isNewTag(QStringLiteral("tag_1"));
         }},
        {"getTagNameById",
         [](Work &work) {
             const Tag tag = work.any();
             return work.tags->getTagNameById(tag.id) == tag.name() &&
                    work.tags->getTagNameById(work.unknown()).isEmpty();
         }},
        {"getTagNameById of a system tag",
         [](Work &work) { return work.tags->getTagNameById(20201) == QLatin1String("S>R_Year"); }},
        {"getTagNameById of a recipe tag",
         [](Work &work) {
             const int recipe = work.recipe();
             return work.tags->getTagNameById(30000 + recipe) == QStringLiteral("R>1_%1").arg(recipe) &&
                    work.tags->getTagNameById(50001 + recipe) == QStringLiteral("R>1_%1I1").arg(recipe);
         }},
        {"getIdByTagName",
         [](Work &work) {
             const Tag tag = work.any();
             return work.tags->getIdByTagName(tag.name()) == tag.id &&
                    work.tags->getIdByTagName(QStringLiteral("tag_1")) == -1 &&
                    work.tags->getIdByTagName(QStringLiteral("it's")) == -1;
         }},
        {"getIdByTagName of other kinds",
         [](Work &work) {
             const int recipe = work.recipe();
             return work.tags->getIdByTagName(QStringLiteral("S>Year")) == 20022 &&
                    work.tags->getIdByTagName(QStringLiteral("R>1_%1").arg(recipe)) == 30000 + recipe &&
                    work.tags->getIdByTagName(QStringLiteral("R>1_%1I1").arg(recipe)) == 50001 + recipe;
         }},
        {"getRecipeConnectedID",
         [](Work &work) {
             const int recipe = work.recipe();
             return work.tags->getRecipeConnectedID(30000 + recipe) == recipe + 1 &&
                    work.tags->getRecipeConnectedID(50001 + recipe) == recipe + 1 &&
                    work.tags->getRecipeConnectedID(1) == -1;
         }},
        {"getTagNames",
         [](Work &work) {
             const QStringList names = work.tags->getTagNames();
             const Tag tag = work.any();
             return names.size() == tagCount && names.at(tag.id - 1) == tag.name();
         }},
        {"getTagNameList",
         [](Work &work) {
             const QStringList names = work.tags->getTagNameList(2);
             return names.size() == tagCount / 4 && names.at(1) == QLatin1String("Tag_6");
         }},
        {"getInternalTagNames",
         [](Work &work) {
             const QStringList names = work.tags->getInternalTagNames();
             return names.size() == tagCount / 4 && names.at(1) == QLatin1String("Tag_8");
         }},
        {"getSimilarTagNames",
         [](Work &work) {
             return work.tags->getSimilarTagNames(QStringLiteral("tag_777")) == QStringList{QStringLiteral("Tag_777")};
         }},
        {"getInternalSimilarTagNames",
         [](Work &work) {
             return work.tags->getInternalSimilarTagNames(QStringLiteral("444")) ==
                    QStringList{QStringLiteral("Tag_444")};
         }},
        {"findSimilarTagName",
         [](Work &work) { return work.tags->findSimilarTagName(QStringLiteral("tg777")) == QList<int>{777}; }},
        {"isStringSimilar",
         [](Work &work) {
             return work.tags->isStringSimilar(QStringLiteral("abc"), QStringLiteral("abc"), 50, 2, Qt::CaseSensitive);
         }},
    };
    return operations;
}

const std::vector<Operation> &linkOperations()
{
    static const std::vector<Operation> operations{
        {"getCommunicatorID",
         [](Work &work) {
             const Tag tag = work.any();
             const int ofUnknown = work.tags->getCommunicatorID(work.unknown());
             return work.tags->getCommunicatorID(tag.id) == tag.link() && work.tags->getLinkID(tag.id) == tag.link() &&
                    (ofUnknown == -1 || ofUnknown == 0);
         }},
        {"getCommunicatorID of an object",
         [](Work &work) {
             const Tag tag = work.any();
             QObject object;
             object.setProperty("tag", tag.id);
             return work.tags->getCommunicatorID(&object, QStringLiteral("tag")) == tag.link() &&
                    work.tags->getLinkID(&object, QStringLiteral("x")) == -1;
         }},
        {"getLinkName",
         [](Work &work) { return work.tags->getLinkName(3) == scripted && work.tags->getLinkName(9).isEmpty(); }},
        {"getLable",
         [](Work &work) {
             return work.tags->getLable(1) && work.tags->getLable(2) && work.tags->getLable(3) &&
                    work.tags->getLable(5) && work.tags->getLable(1) != work.tags->getLable(5) &&
                    !work.tags->getLable(4) && !work.tags->getLable(9);
         }},
        {"getAllLinkID",
         [](Work &work) {
             return sorted(work.tags->getAllLinkID()) == (QList<int>{1, 2, 3, 4, 5});
         }},
        {"getAllEnabledLinkID",
         [](Work &work) {
             return sorted(work.tags->getAllEnabledLinkID()) == (QList<int>{1, 2, 3});
         }},
        {"stationList",
         [](Work &work) {
             return work.tags->stationList(2) == (QList<int>{3, 12});
         }},
        {"isValidStationID",
         [](Work &work) {
             return work.tags->isValidStationID(work.onLink(2).id, 12) &&
                    !work.tags->isValidStationID(work.onLink(3).id, 12);
         }},
        {"getStationID",
         [](Work &) { return TagSystem::getStationID(QStringLiteral("12-D100")) == QLatin1String("12"); }},
        {"getTagIDList()",
         [](Work &work) {
             const QList<int> ids = work.tags->getTagIDList();
             return ids.size() == tagCount + recipeCount && ids.at(tagCount) == 30000 &&
                    hasAll(ids.mid(0, tagCount), [](int) { return true; });
         }},
        {"getTagIDList(link)",
         [](Work &work) {
             const int link = work.random.below(4);
             return hasAll(work.tags->getTagIDList(link), [link](int id) { return id % 4 == link; });
         }},
        {"getTagIDsByAddress",
         [](Work &work) {
             const Tag tag = work.onLink(1);
             return work.tags->getTagIDsByAddress(1, tag.address()) == QList<int>{tag.id} &&
                    work.tags->getTagIDsByAddress(3, tag.address()).isEmpty();
         }},
        {"isValidTagID",
         [](Work &work) {
             return work.tags->isValidTagID(work.any().id) && !work.tags->isValidTagID(work.unknown()) &&
                    work.tags->isValidTagID(20094);
         }},
    };
    return operations;
}

const std::vector<Operation> &propertyOperations()
{
    static const std::vector<Operation> operations{
        {"getAddressByID",
         [](Work &work) {
             const Tag tag = work.any();
             return work.tags->getAddressByID(tag.id) == tag.address();
         }},
        {"getIntValueByID",
         [](Work &work) {
             const Tag tag = work.any();
             return work.tags->getIntValueByID(tag.id, QStringLiteral("scale")) == tag.scale() &&
                    work.tags->getIntValueByID(tag.id, QStringLiteral("scale + 1")) == tag.scale() + 1 &&
                    work.tags->getIntValueByID(tag.id, QStringLiteral("no_such_column")) == 0;
         }},
        {"getScanTimeByID",
         [](Work &work) {
             const Tag tag = work.any();
             return work.tags->getScanTimeByID(tag.id) == tag.id % 3 && work.tags->getScanTimeByID(20011) == 1;
         }},
        {"getDefaultValueByID",
         [](Work &work) {
             const Tag tag = work.any();
             return work.tags->getDefaultValueByID(tag.id) == tag.id % 9;
         }},
        {"getAdditionByID",
         [](Work &work) {
             const Tag tag = work.any();
             return work.tags->getAdditionByID(tag.id) == tag.id % 7;
         }},
        {"getScaleByID",
         [](Work &work) {
             const Tag tag = work.any();
             const int recipe = work.recipe();
             return work.tags->getScaleByID(tag.id) == tag.scale() &&
                    work.tags->getScaleByID(30000 + recipe) == Tag(recipe + 1).scale();
         }},
        {"getAccessModeByID",
         [](Work &work) {
             const Tag tag = work.any();
             return work.tags->getAccessModeByID(tag.id) == tag.access() &&
                    work.tags->getAccessModeByID(work.unknown()) == 0 && work.tags->getAccessModeByID(20011) == 1;
         }},
    };
    return operations;
}

const std::vector<Operation> &valueOperations()
{
    static const std::vector<Operation> operations{
        {"var2ByteArray",
         [](Work &work) {
             const Tag tag = work.any();
             QByteArray bytes("left over");
             work.tags->var2ByteArray(tag.id, hundred(tag), bytes);
             return bytes == hundredImage(tag);
         }},
        {"var2ByteArray of a recipe tag",
         [](Work &work) {
             const int recipe = work.recipe();
             const Tag tag(recipe + 1);
             QByteArray bytes;
             work.tags->var2ByteArray(50001 + recipe, hundred(tag), bytes);
             return bytes == hundredImage(tag);
         }},
        {"varToByteArrayThreadSafe",
         [](Work &work) {
             const Tag tag = work.any();
             return work.tags->varToByteArrayThreadSafe(tag.id, hundred(tag)) == hundredImage(tag);
         }},
        {"byteArray2Var",
         [](Work &work) {
             const Tag tag = work.any();
             QVariant value;
             work.tags->byteArray2Var(tag.id, hundredImage(tag), value);
             return tag.type() == 8 ? value.toByteArray() == hundredImage(tag)
                                    : value.toInt() == (tag.type() == 0 ? 0 : 100);
         }},
        {"byteArrayToVarThreadSafe",
         [](Work &work) {
             const Tag tag = work.any();
             const QVariant value = work.tags->byteArrayToVarThreadSafe(tag.id, hundredImage(tag));
             return tag.type() == 8 ? value.toByteArray() == hundredImage(tag)
                                    : value.toInt() == (tag.type() == 0 ? 0 : 100);
         }},
        {"QByteArrayToInt and its like",
         [](Work &) {
             return TagSystem::QByteArrayToInt(QByteArray("\xff\xff")) == 65535 &&
                    TagSystem::QByteArrayToUInt(QByteArray("\x01\x02")) == 513 &&
                    TagSystem::byteArrayToString(QByteArray("AB\0C", 4)) == QLatin1String("AB");
         }},
        {"isAsciiType",
         [](Work &work) {
             const Tag tag = work.any();
             return work.tags->isAsciiType(tag.id) == (tag.type() == 8);
         }},
        {"dataTypeList and its like",
         [](Work &work) {
             return work.tags->dataTypeList().size() == 12 &&
                    work.tags->datatypeString(10) == QLatin1String("INT(64") && work.tags->accessModeList().size() == 2;
         }},
        {"getMaxMinValue",
         [](Work &work) {
             static const std::array<double, 12> highest{1,
                                                         127,
                                                         255,
                                                         32767,
                                                         65535,
                                                         2147483647,
                                                         4294967295,
                                                         double(3.4e+37F),
                                                         2147483647,
                                                         1.7976931348623157e308,
                                                         9223372036854775807.0,
                                                         18446744073709551615.0};
             const Tag tag = work.any();
             QVariant max;
             QVariant min;
             work.tags->getMaxMinValue(tag.id, max, min);
             return max.toDouble() == highest.at(static_cast<std::size_t>(tag.type())) && min.toDouble() <= 0;
         }},
        {"isInTheRange",
         [](Work &work) {
             const Tag tag = work.any();
             const int type = tag.type();
             return work.tags->isInTheRange(tag.id, 100) == ((type >= 1 && type <= 7) || type == 9);
         }},
        {"toBaseSystemStringFromLongLong",
         [](Work &work) {
             return work.tags->toBaseSystemStringFromLongLong(work.any().id, 100, 16) == QLatin1String("64");
         }},
        {"toLongLongByBaseSystemString",
         [](Work &work) {
             const Tag tag = work.any();
             bool ok = false;
             bool formatError = true;
             const bool isReread = tag.type() >= 1 && tag.type() <= 6;
             return work.tags->toLongLongByBaseSystemString(tag.id, QStringLiteral("64"), ok, 16, formatError) ==
                        (isReread ? 100 : 64) &&
                    ok && !formatError;
         }},
        {"getValueTextWithShiftDecimalPoint",
         [](Work &work) {
             return work.tags->getValueTextWithShiftDecimalPoint(1234, 6, 2, true) == QLatin1String("0012.34");
         }},
    };
    return operations;
}

} // namespace

const std::vector<Operation> &commandOperations()
{
    static const std::vector<Operation> operations{
        {"getCommunicatorCommandByIndex",
         [](Work &work) {
             const Tag tag = work.any();
             bool ok = false;
             return isCommandOf(work.tags->getCommunicatorCommandByIndex(tag.id, ok), tag, tag.address()) && ok;
         }},
        {"getCommunicatorCommandByIndex of a recipe tag",
         [](Work &work) {
             const int recipe = work.recipe();
             bool ok = false;
             const CommunicatorCommand command = work.tags->getCommunicatorCommandByIndex(30000 + recipe, ok);
             return isCommandOf(command, Tag(recipe + 1), QStringLiteral("R>1_%1").arg(recipe)) && ok &&
                    command.auxiliaryNumber == -1;
         }},
        {"getCommunicatorCommandByIndex of a tag that does not exist",
         [](Work &work) {
             bool ok = false;
             const CommunicatorCommand command = work.tags->getCommunicatorCommandByIndex(work.unknown(), ok);
             return command.address.isEmpty() && command.dataType == (ok ? 0 : 9) && command.scanTime == (ok ? 1 : -1);
         }},
        {"getDataTypeByID",
         [](Work &work) {
             const Tag tag = work.any();
             const int recipe = work.recipe();
             return work.tags->getDataTypeByID(tag.id) == tag.type() &&
                    work.tags->getDataTypeByID(work.unknown()) == 0 &&
                    work.tags->getDataTypeByID(50001 + recipe) == Tag(recipe + 1).type() &&
                    work.tags->getDataTypeByID(20010) == 8;
         }},
        {"getDataSizeByID",
         [](Work &work) {
             const Tag tag = work.any();
             return work.tags->getDataSizeByID(tag.id) == tag.size() && work.tags->getDataSizeByType(4) == 2;
         }},
        {"getCommunicatorCommandDataType",
         [](Work &work) {
             return work.tags->getCommunicatorCommandDataType(8) == 5 &&
                    work.tags->getCommunicatorCommandDataType(12) == 9;
         }},
        {"isReadOnce", [](Work &work) { return !work.tags->isReadOnce(work.any().id); }},
        {"isBitType",
         [](Work &work) {
             const Tag tag = work.any();
             return work.tags->isBitType(tag.id) == (tag.type() == 0);
         }},
        {"normalizedAddress",
         [](Work &work) {
             const Tag tag = work.any();
             return work.tags->normalizedAddress(tag.address()) == tag.address();
         }},
        {"getPrefixSymbol",
         [](Work &work) { return work.tags->getPrefixSymbol(plainWord(work).id) == QLatin1String("D"); }},
        {"getPrefixSymbol of a scripted row",
         [](Work &work) { return work.tags->getPrefixSymbol(work.onLink(3).id) == QLatin1String("D"); }},
        {"getPrefixSymbol of a dynamic family",
         [](Work &work) {
             const Tag tag = work.onLink(2);
             return work.tags->getPrefixSymbol(tag.id) == QStringLiteral("DB%1.DBW").arg(tag.id % 40 + 1);
         }},
        {"getContinuousCommand",
         [](Work &work) {
             const Tag tag = wordOn(work);
             return addresses(work.tags->getContinuousCommand(tag.id, 3)) == runOf(tag, 3);
         }},
        {"getContinuousCommand of a wider tag",
         [](Work &work) {
             const int id = plainDoubleWord(work).id;
             return addresses(work.tags->getContinuousCommand(id, 3)) ==
                    (QStringList{QStringLiteral("D%1").arg(id), QStringLiteral("D%1").arg(id + 2),
                                 QStringLiteral("D%1").arg(id + 4)});
         }},
        {"getContinuousCommandwithCap",
         [](Work &work) {
             const int id = plainWord(work).id;
             return addresses(work.tags->getContinuousCommandwithCap(id, 2, 5, true)) ==
                    (QStringList{QStringLiteral("D%1").arg(id), QStringLiteral("D%1").arg(id + 5)});
         }},
        {"creatBlockCommand",
         [](Work &work) {
             const Tag tag = plainDoubleWord(work);
             QList<CommunicatorCommand> out;
             return work.tags->creatBlockCommand(tag.id, 70, out) &&
                    shortForms(out) == (QStringList{QStringLiteral("D%1 3 32").arg(tag.id),
                                                    QStringLiteral("D%1 3 32").arg(tag.id + 64),
                                                    QStringLiteral("D%1 3 6").arg(tag.id + 128)});
         }},
        {"creatBlockCommand of a dynamic family",
         [](Work &work) {
             const Tag tag = work.onLink(2);
             QList<CommunicatorCommand> out;
             return work.tags->creatBlockCommand(tag.id, 5, out) &&
                    shortForms(out) == QStringList{QStringLiteral("%1 2 5").arg(tag.address())};
         }},
    };
    return operations;
}

std::vector<Operation> allOperations()
{
    std::vector<Operation> all;
    for (const auto *part : {&lifecycleOperations(), &nameOperations(), &linkOperations(), &propertyOperations(),
                             &valueOperations(), &commandOperations()})
        all.insert(all.end(), part->begin(), part->end());
    return all;
}

} // namespace threads
