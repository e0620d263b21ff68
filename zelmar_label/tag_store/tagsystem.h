// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TAGSYSTEM_H
#define ZELMAR_LABEL_TAGSYSTEM_H

#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/tag_store/systemtagiteminformation.h"
#include "zelmar_label/zelmar_label_export.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMap>
#include <QMutex>
#include <QObject>
#include <QPair>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <atomic>
#include <memory>

namespace label {
class LabelInterface;
class TagNameList;
} // namespace label

/// A project's tags: named PLC data items in the SQLite table `custom_tag_table`, the built-in system tags and the
/// recipe tags that the project passes in. Also the commands of a tag, its limits, and its value as bytes and as text.
///
/// There is one object per project. `instance` makes and owns it; never delete one. The project registers its database
/// as a Qt connection, whose name is the key. The application's property "currentProject" is the key as a number.
///
/// *Two kinds of process.* In an editor, tags are written on the main thread, and a compile thread may read them on a
/// connection of its own, registered as "TOLV_compileing". If the application has a valid property `tolv_env`, tags no
/// longer change, the first `instance(key)` reads the tag table into memory, and any number of threads may call every
/// operation that is not a write.
///
/// *Ids.* 20000 to 21000 are system tags, 30000 to 50000 recipe tags, 50001 to 60000 recipe row tags, all others rows
/// of the tag table. -1 means no tag. New tags never get the id of a system or recipe tag; existing rows with such an
/// id count as such tags.
///
/// *Failures.* Nothing throws. A statement that fails gives no rows. A message, where one is documented, is a message
/// box that blocks; in a program without widgets it is a line at warning level in the log.
class ZELMAR_LABEL_EXPORT TagSystem : public QObject
{
    Q_OBJECT

public:
    /// An object without a database: only system tags and the codec work.
    explicit TagSystem(QObject *parent);

    /// Closes the connection.
    ~TagSystem() override;

    /// \name Lifecycle
    ///@{
    /// Returns the object of the connection `key`. The first call makes it; it is kept even if binding fails. An empty
    /// key returns one object without a database. Main thread.
    static TagSystem *instance(QString key);

    /// Returns the object of the current project; in the tolv environment the last object made, once there is one.
    /// Null, after a message, when there is no current project.
    static TagSystem *instance();

    /// Deletes all objects at the end of the process.
    static void drop();

    /// Binds the object to an existing connection and makes the tag table if it is missing. Returns false, after a
    /// message, when there is no such connection; true, after a message, when it cannot be opened.
    bool init(const QString &connectionName);

    /// Opens `fileName` in the folder "database" beside the application as a stand-alone tag database, on a connection
    /// of that name; makes it if it is missing. Returns false, after a message, when it cannot be opened.
    bool createDatabaseConnection(const QString &fileName);

    /// Makes the empty file of a stand-alone tag database; a message when it cannot be made.
    void initializeTagDatabase(const QString &filePath);

    /// The connection for the calling thread: "TOLV_compileing", if it exists, on another thread of an editor, else the
    /// object's own.
    QSqlDatabase database() const;

    /// Closes the object's connection, if it is open, and removes it.
    void closeDatabase();

    /// "custom_tag_table".
    QString customTagTableName() const;
    ///@}

    /// \name Tag table
    ///@{
    /// Makes the table if it is missing; never changes an existing one. A message when it cannot be made.
    void createCustomTable();

    /// Appends the twelve column names and clauses to the object's lists.
    void settingTagTableColumns();

    /// Position of "address" among the columns, 5; 0 while the lists are empty.
    int getCustomTagTableAddressColumn();

    /// Reads the list of tag names again; a message when it cannot be read.
    void refreshTagNames();

    bool isSystemID(int id) const;
    /// Recipe tags and recipe row tags.
    bool isRecipeID(int id) const;
    /// System or recipe id.
    bool isNotNormalTag(int id);
    ///@}

    /// \name System tags
    ///@{
    /// Fills the table of system tags and counts them; called by the constructor.
    void initSystemTags();
    /// The tag's type; `InvalidTag` for an id without one.
    SystemTagItemInformation::TagType getSystemTagType(int id);
    /// The tag's data type; `Invalid` for an id without one.
    CommunicatorCommand::DataType getSystemTagDataType(int id);
    bool isControlSystemTag(int id) const;
    int numControlSystemTag() const;
    int numInforSystemTag() const;
    ///@}

    /// \name Writing tags, in an editor's main thread
    ///@{
    /// Adds an internal tag with all defaults, unless the name is empty or not new. A message when it fails.
    void addDafaultTag(const QString &name);

    /// Adds a tag. False when the name is empty or not new, and, after a message, when the statement fails. `scale` is
    /// the length in bytes of an "Ascii" tag.
    bool addTag(const QString &name, const QString &address, int connectorId, int dataType, int scale);

    /// Changes the tag of this name, adding it first if it is new; its other columns go back to their defaults. False
    /// for an empty name, and, after a message, when the statement fails.
    bool modifyTag(const QString &name, const QString &address, int connectorId, int dataType, int scale);

    /// Adds a copy of tag `id` with the name and address of `source`, or of tag `id` if the first member of `source` is
    /// null. Adds nothing if that name or a numbered form of it ("name-3") exists. Returns `count` ids of tags of that
    /// name; -1 for a missing or duplicate name.
    QList<int> addTags(int id, QPair<QString, CommunicatorCommand> source, int count);
    QList<int> addTags(int id, int count);

    /// Renames a tag, unless the name or a numbered form of it exists. A failure goes to the debug log; a name with a
    /// double quote or a zero character fails.
    void setTagNameById(QString name, int id);
    ///@}

    /// \name Names
    ///@{
    /// Begins with "S>" or "s>".
    bool isSystemTag(const QString &name) const;
    /// Begins with "R>" or "r>".
    bool isRecipeTag(const QString &name) const;
    /// True for a name that is not empty, no system or recipe name, and not in the list. Runs no statement.
    bool isNewTag(const QString &name) const;
    /// Empty when there is none.
    QString getTagNameById(int id) const;
    /// -1 when there is none or more than one, and for a name with a single quote or a zero character.
    int getIdByTagName(const QString &name) const;
    /// The tag to which a recipe tag is connected; 0 when it is not connected, -1 when `id` is no recipe id.
    int getRecipeConnectedID(int id);
    /// Replaces the recipe tags: id to name, id to connected tag. Main thread, before other threads read them.
    void setRecipeTags(const QMap<int, QString> &names, const QMap<int, int> &connected);
    void setRecipeRowTags(const QMap<int, QString> &names, const QMap<int, int> &connected);
    /// The names of the tag table, in row order, as of the last write.
    QStringList getTagNames();
    /// The names of a link's tags, in row order.
    QStringList getTagNameList(int connectorId);
    /// The names of link 0.
    QStringList getInternalTagNames();
    /// The names, in list order, that contain the characters of `text` in this order, in any case. None for an empty
    /// text.
    QStringList getSimilarTagNames(const QString &text);
    /// The same among the internal tags.
    QStringList getInternalSimilarTagNames(const QString &text);
    /// The ids of the names that `getSimilarTagNames` finds, each once, in no particular order.
    QList<int> findSimilarTagName(const QString &text);
    /// True when `b` contains `n`-grams of `a`, both padded, above `percent` of the shorter one's number; never for an
    /// empty text.
    bool isStringSimilar(QString a, QString b, double percent, int n, Qt::CaseSensitivity cs);
    ///@}

    /// \name Links and stations
    ///@{
    /// The link of a tag; 0 for system and recipe tags, -1 for a tag that does not exist.
    int getCommunicatorID(int id);
    int getLinkID(int id);
    /// The link of the tag whose id is `property` of `object`; -1 without the property.
    int getCommunicatorID(QObject *object, QString property);
    int getLinkID(QObject *object, QString property);
    /// The link's driver name; empty if there is none.
    QString getLinkName(int linkId);
    /// The label of the link's driver, custom or default; null when there is none. The label store owns it.
    label::LabelInterface *getLable(int linkId);
    /// Each link once, in no particular order.
    QList<int> getAllLinkID();
    QList<int> getAllEnabledLinkID();
    /// Station numbers of a link, ascending.
    QList<int> stationList(int linkId);
    /// True when the tag's link has the station.
    bool isValidStationID(int id, int station);
    /// The digits, at most three, at the start of an address.
    static QString getStationID(const QString &address);
    /// All rows of the tag table, then the recipe tags.
    QList<int> getTagIDList();
    /// The rows of a link.
    QList<int> getTagIDList(int linkId);
    /// The rows of a link with this stored address; none for an address with a single quote or a zero character.
    QList<int> getTagIDsByAddress(int linkId, const QString &address);
    /// True for every system and recipe id, and for ids with a row.
    bool isValidTagID(int id);
    ///@}

    /// \name One property of one tag
    /// 0 or empty for a tag that does not exist.
    ///@{
    /// Reads the tag table into memory; runs once, in the tolv environment.
    void initCatchTable();
    QString getAddressByID(int id);
    /// The column of the tag's row as a number.
    int getIntValueByID(int id, const QString &column);
    int getScanTimeByID(int id);
    int getDefaultValueByID(int id);
    int getAdditionByID(int id);
    int getScaleByID(int id);
    int getAccessModeByID(int id);
    ///@}

    /// \name Values as bytes, the least significant one first
    ///@{
    /// Sets `out` to the bytes of `value` for tag `id`; empty for an unconnected recipe tag and for an unknown type.
    void var2ByteArray(int id, const QVariant &value, QByteArray &out);
    /// Sets `out` to the value of `bytes` for tag `id`, a null variant for an unknown type. Missing bytes count as 0.
    void byteArray2Var(int id, const QByteArray &bytes, QVariant &out);
    /// As `var2ByteArray`; the result always has the type's full width, and a zero byte ends a text.
    QByteArray varToByteArrayThreadSafe(int id, const QVariant &value);
    /// As `byteArray2Var`; null for too few bytes, and a `bool` for a bit.
    QVariant byteArrayToVarThreadSafe(int id, QByteArray bytes);
    static int QByteArrayToInt(const QByteArray &bytes);
    static unsigned int QByteArrayToUInt(const QByteArray &bytes);
    /// The text up to the first zero byte.
    static QString byteArrayToString(const QByteArray &bytes);
    bool isAsciiType(int id);
    ///@}

    /// \name Types, limits and texts
    ///@{
    /// The twelve tag data types, in order, translated.
    QStringList dataTypeList() const;
    /// One of these; empty for a wrong number.
    QString datatypeString(int type) const;
    /// The two access modes, translated.
    QStringList accessModeList() const;
    /// The limits of the tag's type. Both variants do not change for -1 and for an unconnected recipe id.
    void getMaxMinValue(int id, QVariant &max, QVariant &min);
    /// True when the value is within the limits; false for texts and for the 64-bit types.
    bool isInTheRange(const int &id, const QVariant &value);
    /// `value` in base 8, 10 or 16, in the width of the tag's type; empty for other bases.
    QString toBaseSystemStringFromLongLong(const int &id, const long long &value, const int &base);
    /// The number in `text`. `formatError` is true if `text` is no number; `ok` is then unchanged. `ok` is true if it
    /// fits the type.
    long long toLongLongByBaseSystemString(const int &id, const QString &text, bool &ok, const int &base,
                                           bool &formatError);
    /// The digits of `value` with the decimal point before the last `decimalDigits` of `totalDigits` digits.
    QString getValueTextWithShiftDecimalPoint(const QVariant &value, const int &totalDigits, const int &decimalDigits,
                                              const bool &padToTotal);
    ///@}

    /// \name Commands
    ///@{
    /// The tag's command; `ok` is true if the tag exists.
    CommunicatorCommand getCommunicatorCommandByIndex(int id, bool &ok);
    /// The tag's data type, an index into `dataTypeList`.
    int getDataTypeByID(int id);
    /// Bytes of one value of the tag's type; 1 for texts and unknown types.
    int getDataSizeByID(int id);
    int getDataSizeByType(int type);
    /// The `CommunicatorCommand::DataType` of a tag data type; 9 for a wrong number.
    int getCommunicatorCommandDataType(int type);
    bool isReadOnce(int id);
    bool isBitType(int id);
    /// Returns the address unchanged.
    QString normalizedAddress(const QString &address);
    /// The symbol of the tag's address format; empty when there is none.
    QString getPrefixSymbol(int id);
    /// `count` commands, starting with the tag's; empty when the tag, its link's label or its address is not valid.
    QList<CommunicatorCommand> getContinuousCommand(int id, int count);
    /// The same, `cap` units apart.
    QList<CommunicatorCommand> getContinuousCommandwithCap(int id, int count, int cap, bool checkRange);
    /// Cuts the run of `count` items, starting with the tag's, into block commands for the device. Returns false and
    /// leaves `out` when the run cannot be made or no item fits into a block.
    bool creatBlockCommand(int id, int count, QList<CommunicatorCommand> &out);
    ///@}

    /// All objects by key; null before the first `instance(QString)` and after `drop`.
    static QMap<QString, TagSystem *> *s_instanceMap;

private:
    Q_DISABLE_COPY(TagSystem)

    struct CatchRecord
    {
        int connectorId = 0;
        int access = 0;
        QString address;
        int dataType = 0;
        int scale = 0;
    };

    bool insertTag(const QString &name, const QString &address, int access, int connectorId, int dataType, int scale,
                   QString &error);
    QString newId() const;
    qint64 highestId() const;
    qint64 countedId() const;
    bool hasNumberedForm(const QString &name) const;
    bool rename(int id, const QString &name, QString &error);
    QString systemTagName(int id) const;
    int systemTagId(const QString &name) const;
    CommunicatorCommand::DataType keptSystemTagDataType(int id);
    int resolvedRecipe(int id);
    std::shared_ptr<label::LabelInterface> holdLabelOf(int linkId);
    std::shared_ptr<label::LabelInterface> labelOf(int id, CommunicatorCommand &command, const char *missing);
    const CatchRecord &caught(int id);
    CommunicatorCommand caughtCommand(int id, bool &ok);
    CommunicatorCommand commandOf(int id, bool &ok, int redirections);
    QString tableStatement(const char *statement) const;
    QList<int> idsOf(const QString &statement, const QVariantList &values = QVariantList()) const;

    static TagSystem *s_defaultInstance;

    QStringList m_columnNames;
    QStringList m_columnTypes;
    std::unique_ptr<label::TagNameList> m_tagNames;
    QSqlDatabase m_database;
    /// By id; constant after the constructor, so readers take no lock.
    QMap<int, SystemTagItemInformation> m_systemTags;
    /// From the first system id on: whether a query for the data type of an id without a tag made a default tag.
    std::unique_ptr<std::atomic<bool>[]> m_isDefaultSystemTag;
    QMap<int, QString> m_recipeTags;
    QMap<int, int> m_recipeConnectedIDs;
    QMap<int, QString> m_recipeRowTags;
    QMap<int, int> m_recipeRowConnectedIDs;
    int m_numControlSystemTag = 0;
    int m_numInforSystemTag = 0;
    QHash<int, CatchRecord> m_catchTable;
    mutable QMutex m_mutex;
    bool m_catchTableReady = false;
};

#endif
