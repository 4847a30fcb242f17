// The database engine: DAO-style access (DBEngine, Database, Recordset) over SQLite files.
// Nothing outside this file and DbEngine.cpp touches sqlite3_* directly.
#pragma once

#include <QByteArrayView>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantList>
#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

// An engine error: the number and the description the engine reports.
class DbError : public std::runtime_error {
public:
    DbError(int number, const QString& description);
    int Number() const { return mNumber; }
    const QString& Description() const { return mDescription; }

private:
    int mNumber;
    QString mDescription;
};

// Engine error numbers the program raises or recognises.
namespace DbErr {
constexpr int FileNotFound = 3024;     // "Could not find file '...'."
constexpr int NotValidPassword = 3031; // "Not a valid password."
constexpr int CannotOpen = 3051;       // the file cannot be opened
constexpr int Locked = 3218;           // "Could not update; currently locked."
constexpr int ReadOnly = 3027;         // "Cannot update. Database or object is read-only."
constexpr int Syntax = 3075;           // syntax error or unknown name in a statement
constexpr int Generic = 3146;          // any other engine failure
} // namespace DbErr

class Database;
class Recordset;
struct StatementCache;

// What a value of the current row is: the engine keeps a type per value, not per column.
enum class FieldType { Null, Long, Double, Text, Binary };

// One column of the current row of a record set.
class Field {
public:
    Field(const Recordset* rs, int index) : mRs(rs), mIndex(index) {}
    QVariant Value() const; // null when the column is Null
    QString Text() const;   // "" when Null
    // The value as the engine holds it in UTF-8, without a copy: for reading long walks fast.
    // Valid until the record set moves; empty for Null. A number gives the engine's own text of
    // it, which need not be Text()'s.
    QByteArrayView Utf8() const;
    double Double() const; // 0 when Null or not a number
    qint64 Long() const;   // 0 when Null or not a number
    bool IsNull() const;
    FieldType Type() const;
    QString Name() const;
    operator QString() const { return Text(); }

private:
    const Recordset* mRs;
    int mIndex;
};

// The result of a query, walked the DAO way: EOF, MoveFirst, MoveNext, MoveLast, RecordCount.
// Rows are read from the engine as the walk moves; nothing is copied up front.
class Recordset {
public:
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;
    ~Recordset();

    bool Eof() const { return mEof; }
    bool BOF() const { return mBof; }
    void MoveFirst();
    void MoveNext();
    void MoveLast();
    // 0 for an empty result; before MoveLast any other value only says that rows exist.
    qint64 RecordCount() const;

    int FieldCount() const;
    QString FieldName(int index) const;
    int FieldIndex(const QString& name) const; // -1 when absent
    Field Fields(const QString& name) const;
    Field Fields(int index) const { return Field(this, index); }
    Field operator[](const QString& name) const { return Fields(name); }

    // Editing through the record set (single-table queries).
    void AddNew();
    void Edit();
    void SetField(const QString& name, const QVariant& value);
    void Update();

    void Close();

private:
    friend class Database;
    friend class Field;
    Recordset(Database* db, sqlite3_stmt* stmt, const QString& sql, QByteArray text);
    void step();
    QVariant columnValue(int index) const;
    QString columnText(int index) const;
    QByteArrayView columnUtf8(int index) const;
    double columnDouble(int index) const;
    bool columnIsNull(int index) const;

    Database* mDb = nullptr;
    sqlite3_stmt* mStmt = nullptr;
    QString mSql;
    QByteArray mText;                          // the statement as compiled
    std::weak_ptr<StatementCache> mStatements; // where the statement goes back when closed
    QStringList mNames;                        // column names as the statement gives them
    // Names looked up before, for names held in static storage (string literals), by address.
    struct LookupHit {
        const QChar* key;
        qsizetype size;
        int index;
    };
    mutable std::vector<LookupHit> mLookups;
    bool mEof = true;
    bool mBof = true;
    qint64 mPosition = -1; // 0-based row the statement is on
    qint64 mCount = -1;    // known after MoveLast
    bool mAnyRow = false;
    enum class EditMode { None, Add, Edit } mEditMode = EditMode::None;
    QVariantList mOriginal;
    QList<QPair<QString, QVariant>> mPending;
};

// One open file. Closes itself at the end of its scope.
class Database {
public:
    Database() = default;
    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    bool IsOpen() const { return mDb != nullptr; }
    const QString& Name() const { return mPath; }

    // Runs one statement; throws DbError. Values bind to "?" placeholders in order.
    void Execute(const QString& sql, const QVariantList& values = {});
    qint64 RecordsAffected() const { return mRecordsAffected; }
    Recordset OpenRecordset(const QString& sql, const QVariantList& values = {});

    // BEGIN IMMEDIATE: the write lock is held from the start of the transaction.
    void BeginTrans();
    void CommitTrans();
    void Rollback(); // errors ignored: the engine may already have rolled back
    bool InTransaction() const;

    // Savepoints inside a transaction: one piece of work that can be undone alone while the
    // transaction around it goes on. RollbackToSavepoint undoes the work since the savepoint
    // and ends it; its errors are ignored as Rollback's are.
    void Savepoint(const QString& name);
    void ReleaseSavepoint(const QString& name);
    void RollbackToSavepoint(const QString& name);

    void Close();

    // Engine seam for tests: the next statement whose text contains `fragment` fails with `error`.
    // "COMMIT" fails the next commit, the transaction staying open as after a failed commit.
    static void FailNextStatementContaining(const QString& fragment, int number = DbErr::Generic,
                                            const QString& description = {});
    // Engine seam for tests: `hook` runs once, just before the next statement whose text contains
    // `fragment` (so that another process can be made to act between two statements).
    static void BeforeNextStatementContaining(const QString& fragment, std::function<void()> hook);

private:
    friend class DBEngine;
    friend class Recordset;
    // A compiled statement with its values bound: one kept from an earlier run of the same text
    // when there is one. `text` receives the statement's text for giving it back.
    sqlite3_stmt* prepare(const QString& sql, const QVariantList& values, QByteArray& text);
    [[noreturn]] void raise(int rc, const QString& sql) const;

    // The single-column primary key of a table, "" when it has none; read once per table.
    QString keyColumn(const QString& table);

    sqlite3* mDb = nullptr;
    QString mPath;
    qint64 mRecordsAffected = 0;
    QHash<QString, QString> mKeyColumns;
    std::shared_ptr<StatementCache> mStatements;
};

class DBEngine {
public:
    // Opens an existing file shared and writable. A missing file fails with DbErr::FileNotFound.
    static Database OpenDatabase(const QString& path);
    // The connect-string form used for the rights file:
    // OpenDatabase("", false, false, ";DATABASE=<path>;PWD=<password>").
    static Database OpenDatabase(const QString& name, bool exclusive, bool readOnly,
                                 const QString& connect);
    // Writes a compacted copy of src to dst (dst must not exist).
    static void CompactDatabase(const QString& src, const QString& dst);
    // Writes the database src over the database dst (the live file), page by page through
    // SQLite's online backup. src is read inside a read transaction; dst is written under its own
    // lock and rollback journal, so nobody reads it half-written and a crash leaves it whole. A
    // lock held elsewhere on either file fails it once the busy timeout has passed
    // (DbErr::Locked), with dst as it was. A dst that does not exist is made; one that exists but
    // is no database at all is replaced as a whole.
    static void WriteDatabaseOver(const QString& src, const QString& dst);
    // Copies the file of the database src byte for byte into the new file dst, reading it
    // through the engine inside a read transaction, so that no commit lands mid-copy; a lock held
    // elsewhere fails it once the busy timeout has passed (DbErr::Locked). dst is replaced only
    // once it is whole; a folder that cannot take it fails the copy with dst as it was.
    static void CopyDatabaseFile(const QString& src, const QString& dst);

    // Creates a new empty file (used only by the data-file tool and tests).
    static Database CreateDatabase(const QString& path);
    // Stores the password that the connect-string form checks.
    static void SetDatabasePassword(Database& db, const QString& password);

    // How long a statement waits for another workstation's lock before it fails. The lock is
    // tried again every millisecond or two, so a workstation that lets go of the lock between
    // two short transactions lets the waiting one in.
    static int BusyTimeoutMs() { return 2000; }

private:
    static Database openFile(const QString& path, bool readOnly);
};
