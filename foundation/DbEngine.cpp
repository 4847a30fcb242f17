#include "foundation/DbEngine.h"

#include "foundation/Helpers.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSaveFile>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <optional>
#include <sqlite3.h>
#include <vector>

namespace {

struct InjectedFailure {
    QString fragment;
    int number = 0;
    QString description;
};
std::optional<InjectedFailure>& injected() {
    static std::optional<InjectedFailure> f;
    return f;
}

struct InjectedHook {
    QString fragment;
    std::function<void()> hook;
};
std::optional<InjectedHook>& injectedHook() {
    static std::optional<InjectedHook> h;
    return h;
}

// Val() inside statements, with the same rule as the helper.
void sqlVal(sqlite3_context* ctx, int, sqlite3_value** argv) {
    switch (sqlite3_value_type(argv[0])) {
    case SQLITE_NULL:
        sqlite3_result_double(ctx, 0);
        return;
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
        sqlite3_result_double(ctx, sqlite3_value_double(argv[0]));
        return;
    default: {
        const auto* txt = reinterpret_cast<const char*>(sqlite3_value_text(argv[0]));
        sqlite3_result_double(ctx, Val(QString::fromUtf8(txt ? txt : "")));
    }
    }
}

// Waits for another connection's lock in short steps, up to the busy timeout. The engine's own
// handler sleeps up to 100 ms between tries and so rarely catches the short gap between two
// transactions of a workstation that writes in batches.
int busyHandler(void*, int count) {
    using Clock = std::chrono::steady_clock;
    static Clock::time_point started;
    if (count == 0)
        started = Clock::now();
    if (Clock::now() - started >= std::chrono::milliseconds(DBEngine::BusyTimeoutMs()))
        return 0;
    sqlite3_sleep(count < 10 ? 1 : 2);
    return 1;
}

QString hashPassword(const QString& salt, const QString& password) {
    return QString::fromLatin1(
        QCryptographicHash::hash((salt + password).toUtf8(), QCryptographicHash::Sha256).toHex());
}

int mapError(int rc) {
    switch (rc & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return DbErr::Locked;
    case SQLITE_READONLY:
        return DbErr::ReadOnly;
    case SQLITE_CANTOPEN:
        return DbErr::CannotOpen;
    case SQLITE_ERROR:
        return DbErr::Syntax;
    default:
        return DbErr::Generic;
    }
}

QString describe(int rc, sqlite3* db) {
    switch (rc & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return QStringLiteral("Could not update; currently locked.");
    case SQLITE_READONLY:
        return QStringLiteral("Cannot update. Database or object is read-only.");
    default:
        return db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(rc));
    }
}

// The files the online backup writes over go through this VFS, which hands the default VFS
// everything as it is except the writes to a rollback journal: SQLite writes each journal record
// as three small writes, and a copy over a whole file journals every page. Here they are gathered
// in memory and handed on in large pieces, in order, before any read, sync, truncation, size
// query or close of the journal, so the journal on disk at each sync is the one SQLite wrote.
// A failed write of a piece is reported by the call that hands it on (at the latest the sync,
// before a single page of the database is written).
struct GatheringJournal {
    sqlite3_file base;
    sqlite3_file* real;
    std::vector<char>* pending;
    sqlite3_int64 pendingAt;
};

// The default VFS takes writes of less than 128 KiB only.
constexpr size_t kJournalPiece = size_t(64) << 10;

sqlite3_vfs* defaultVfs() {
    static sqlite3_vfs* vfs = sqlite3_vfs_find(nullptr);
    return vfs;
}

GatheringJournal* gathering(sqlite3_file* f) {
    return reinterpret_cast<GatheringJournal*>(f);
}

int handOn(GatheringJournal* j) {
    if (j->pending->empty())
        return SQLITE_OK;
    const int rc = j->real->pMethods->xWrite(j->real, j->pending->data(), int(j->pending->size()),
                                             j->pendingAt);
    j->pending->clear();
    return rc;
}

int journalClose(sqlite3_file* f) {
    GatheringJournal* j = gathering(f);
    const int written = handOn(j);
    const int rc = j->real->pMethods->xClose(j->real);
    delete j->pending;
    return written != SQLITE_OK ? written : rc;
}
int journalRead(sqlite3_file* f, void* out, int n, sqlite3_int64 at) {
    GatheringJournal* j = gathering(f);
    const int rc = handOn(j);
    return rc != SQLITE_OK ? rc : j->real->pMethods->xRead(j->real, out, n, at);
}
int journalWrite(sqlite3_file* f, const void* data, int n, sqlite3_int64 at) {
    GatheringJournal* j = gathering(f);
    std::vector<char>& p = *j->pending;
    if (!p.empty() &&
        (at != j->pendingAt + sqlite3_int64(p.size()) || p.size() + size_t(n) > kJournalPiece)) {
        if (const int rc = handOn(j); rc != SQLITE_OK)
            return rc;
    }
    if (p.empty())
        j->pendingAt = at;
    const char* bytes = static_cast<const char*>(data);
    p.insert(p.end(), bytes, bytes + n);
    return SQLITE_OK;
}
int journalTruncate(sqlite3_file* f, sqlite3_int64 size) {
    GatheringJournal* j = gathering(f);
    const int rc = handOn(j);
    return rc != SQLITE_OK ? rc : j->real->pMethods->xTruncate(j->real, size);
}
int journalSync(sqlite3_file* f, int flags) {
    GatheringJournal* j = gathering(f);
    const int rc = handOn(j);
    return rc != SQLITE_OK ? rc : j->real->pMethods->xSync(j->real, flags);
}
int journalFileSize(sqlite3_file* f, sqlite3_int64* size) {
    GatheringJournal* j = gathering(f);
    const int rc = handOn(j);
    return rc != SQLITE_OK ? rc : j->real->pMethods->xFileSize(j->real, size);
}
int journalLock(sqlite3_file* f, int level) {
    sqlite3_file* r = gathering(f)->real;
    return r->pMethods->xLock(r, level);
}
int journalUnlock(sqlite3_file* f, int level) {
    sqlite3_file* r = gathering(f)->real;
    return r->pMethods->xUnlock(r, level);
}
int journalCheckReservedLock(sqlite3_file* f, int* out) {
    sqlite3_file* r = gathering(f)->real;
    return r->pMethods->xCheckReservedLock(r, out);
}
int journalFileControl(sqlite3_file* f, int op, void* arg) {
    GatheringJournal* j = gathering(f);
    if (const int rc = handOn(j); rc != SQLITE_OK)
        return rc;
    return j->real->pMethods->xFileControl(j->real, op, arg);
}
int journalSectorSize(sqlite3_file* f) {
    sqlite3_file* r = gathering(f)->real;
    return r->pMethods->xSectorSize(r);
}
int journalDeviceCharacteristics(sqlite3_file* f) {
    sqlite3_file* r = gathering(f)->real;
    return r->pMethods->xDeviceCharacteristics(r);
}

const sqlite3_io_methods kJournalMethods = {
    1,
    journalClose,
    journalRead,
    journalWrite,
    journalTruncate,
    journalSync,
    journalFileSize,
    journalLock,
    journalUnlock,
    journalCheckReservedLock,
    journalFileControl,
    journalSectorSize,
    journalDeviceCharacteristics,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
};

int gatheringOpen(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* f, int flags, int* outFlags) {
    sqlite3_vfs* real = defaultVfs();
    if (!(flags & SQLITE_OPEN_MAIN_JOURNAL))
        return real->xOpen(real, name, f, flags, outFlags); // the real file in our slot
    GatheringJournal* j = gathering(f);
    j->base.pMethods = nullptr;
    j->real = reinterpret_cast<sqlite3_file*>(j + 1);
    const int rc = real->xOpen(real, name, j->real, flags, outFlags);
    if (rc != SQLITE_OK)
        return rc;
    j->pending = new std::vector<char>;
    j->pending->reserve(kJournalPiece);
    j->pendingAt = 0;
    j->base.pMethods = &kJournalMethods;
    return SQLITE_OK;
}

// The VFS name the online backup opens its destination with.
const char* gatheringVfs() {
    static sqlite3_vfs vfs = [] {
        sqlite3_vfs* real = defaultVfs();
        sqlite3_vfs v = *real;
        v.szOsFile = int(sizeof(GatheringJournal)) + real->szOsFile;
        v.zName = "qs-gathering-journal";
        v.pAppData = nullptr;
        v.pNext = nullptr;
        v.xOpen = gatheringOpen;
        return v;
    }();
    static const bool registered = sqlite3_vfs_register(&vfs, 0) == SQLITE_OK;
    return registered ? vfs.zName : nullptr;
}

// Writes the database open on `from` into the file at `path` through the online backup, under
// the destination's lock (waiting out the busy timeout) and rollback journal. Returns the
// engine's result code, with its description in `message` on failure.
int backupInto(sqlite3* from, const QString& path, QString& message) {
    sqlite3* to = nullptr;
    int rc = sqlite3_open_v2(QFile::encodeName(path).constData(), &to,
                             SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, gatheringVfs());
    if (rc == SQLITE_OK) {
        sqlite3_extended_result_codes(to, 1);
        sqlite3_busy_timeout(to, DBEngine::BusyTimeoutMs());
        // A cache that holds most of a file keeps the journal from being synced at every spill.
        rc = sqlite3_exec(to, "PRAGMA synchronous=FULL; PRAGMA cache_size=-65536", nullptr, nullptr,
                          nullptr);
    }
    if (rc == SQLITE_OK) {
        sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
        if (!backup) {
            rc = sqlite3_extended_errcode(to);
        } else {
            rc = sqlite3_backup_step(backup, -1);
            const int finished = sqlite3_backup_finish(backup);
            rc = rc == SQLITE_DONE ? finished : rc;
        }
    }
    if (rc != SQLITE_OK)
        message = describe(rc, to);
    sqlite3_close_v2(to);
    return rc;
}

} // namespace

// Compiled statements kept for reuse on one connection, so that a statement run again with the
// same text (its values bound afresh) is not compiled again. Only statements not in use are
// kept, reset, the most recently used last.
struct StatementCache {
    struct Entry {
        QByteArray text;
        sqlite3_stmt* stmt;
    };
    static constexpr size_t kCapacity = 32;
    std::vector<Entry> idle;

    sqlite3_stmt* take(const QByteArray& text) {
        for (auto it = idle.rbegin(); it != idle.rend(); ++it) {
            if (it->text == text) {
                sqlite3_stmt* stmt = it->stmt;
                idle.erase(std::next(it).base());
                return stmt;
            }
        }
        return nullptr;
    }
    void put(QByteArray text, sqlite3_stmt* stmt) {
        sqlite3_reset(stmt);
        sqlite3_clear_bindings(stmt);
        if (idle.size() >= kCapacity) {
            sqlite3_finalize(idle.front().stmt);
            idle.erase(idle.begin());
        }
        idle.push_back({std::move(text), stmt});
    }
    // After a change of the tables' structure: a kept statement would be compiled again only at
    // its first step, so a record set would name its columns by the old structure.
    void clear() {
        for (const Entry& e : idle)
            sqlite3_finalize(e.stmt);
        idle.clear();
    }
    ~StatementCache() { clear(); }
};

DbError::DbError(int number, const QString& description)
    : std::runtime_error(description.toStdString()), mNumber(number), mDescription(description) {}

// ---------------------------------------------------------------- Database

Database::Database(Database&& o) noexcept
    : mDb(o.mDb), mPath(std::move(o.mPath)), mRecordsAffected(o.mRecordsAffected),
      mKeyColumns(std::move(o.mKeyColumns)), mStatements(std::move(o.mStatements)) {
    o.mDb = nullptr;
}

Database& Database::operator=(Database&& o) noexcept {
    if (this != &o) {
        Close();
        mDb = o.mDb;
        mPath = std::move(o.mPath);
        mRecordsAffected = o.mRecordsAffected;
        mKeyColumns = std::move(o.mKeyColumns);
        mStatements = std::move(o.mStatements);
        o.mDb = nullptr;
    }
    return *this;
}

Database::~Database() {
    Close();
}

void Database::Close() {
    mStatements.reset(); // kept statements are finalized; open record sets finalize their own
    if (mDb) {
        if (!sqlite3_get_autocommit(mDb))
            sqlite3_exec(mDb, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close_v2(mDb);
        mDb = nullptr;
    }
}

void Database::raise(int rc, const QString& sql) const {
    Q_UNUSED(sql);
    throw DbError(mapError(rc), describe(rc, mDb));
}

void Database::FailNextStatementContaining(const QString& fragment, int number,
                                           const QString& description) {
    if (fragment.isEmpty()) {
        injected().reset();
        return;
    }
    injected() = InjectedFailure{
        fragment, number,
        description.isEmpty() ? QStringLiteral("Operation failed (injected).") : description};
}

void Database::BeforeNextStatementContaining(const QString& fragment, std::function<void()> hook) {
    if (fragment.isEmpty() || !hook)
        injectedHook().reset();
    else
        injectedHook() = InjectedHook{fragment, std::move(hook)};
}

sqlite3_stmt* Database::prepare(const QString& sql, const QVariantList& values, QByteArray& text) {
    if (!mDb)
        throw DbError(DbErr::Generic, QStringLiteral("Object invalid or no longer set."));
    if (auto& h = injectedHook(); h && sql.contains(h->fragment, Qt::CaseInsensitive)) {
        const std::function<void()> hook = std::move(h->hook);
        h.reset();
        hook();
    }
    if (auto& f = injected(); f && sql.contains(f->fragment, Qt::CaseInsensitive)) {
        InjectedFailure copy = *f;
        f.reset();
        throw DbError(copy.number, copy.description);
    }
    text = sql.toUtf8();
    if (!mStatements)
        mStatements = std::make_shared<StatementCache>();
    sqlite3_stmt* stmt = mStatements->take(text);
    if (!stmt) {
        const char* tail = nullptr;
        const int rc = sqlite3_prepare_v2(mDb, text.constData(), int(text.size()), &stmt, &tail);
        if (rc != SQLITE_OK)
            raise(rc, sql);
        if (!stmt) // an empty statement
            throw DbError(DbErr::Syntax, QStringLiteral("Invalid SQL statement."));
    }
    for (int i = 0; i < values.size(); ++i) {
        const QVariant& v = values.at(i);
        const int p = i + 1;
        if (v.isNull() || !v.isValid()) {
            sqlite3_bind_null(stmt, p);
            continue;
        }
        switch (v.typeId()) {
        case QMetaType::Bool:
            sqlite3_bind_int(stmt, p, v.toBool() ? -1 : 0);
            break;
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Long:
        case QMetaType::Short:
        case QMetaType::UChar:
            sqlite3_bind_int64(stmt, p, v.toLongLong());
            break;
        case QMetaType::Double:
        case QMetaType::Float:
            sqlite3_bind_double(stmt, p, v.toDouble());
            break;
        case QMetaType::QDate:
            sqlite3_bind_text(stmt, p, SqlDate(v.toDate()).toUtf8().constData(), -1,
                              SQLITE_TRANSIENT);
            break;
        default: {
            const QByteArray b = v.toString().toUtf8();
            sqlite3_bind_text(stmt, p, b.constData(), int(b.size()), SQLITE_TRANSIENT);
        }
        }
    }
    return stmt;
}

void Database::Execute(const QString& sql, const QVariantList& values) {
    QByteArray text;
    sqlite3_stmt* stmt = prepare(sql, values, text);
    int rc;
    do {
        rc = sqlite3_step(stmt);
    } while (rc == SQLITE_ROW);
    if (rc != SQLITE_DONE) {
        const int ext = sqlite3_extended_errcode(mDb);
        const DbError err(mapError(ext), describe(ext, mDb));
        sqlite3_finalize(stmt);
        throw err;
    }
    mRecordsAffected = sqlite3_changes64(mDb);
    const QByteArray verb = text.trimmed().left(6).toUpper();
    if (verb.startsWith("CREATE") || verb.startsWith("ALTER") || verb.startsWith("DROP")) {
        sqlite3_finalize(stmt);
        mStatements->clear();
        return;
    }
    mStatements->put(std::move(text), stmt);
}

Recordset Database::OpenRecordset(const QString& sql, const QVariantList& values) {
    QByteArray text;
    sqlite3_stmt* stmt = prepare(sql, values, text);
    Recordset rs(this, stmt, sql, std::move(text));
    rs.step();
    rs.mAnyRow = !rs.mEof;
    rs.mBof = rs.mEof;
    return rs;
}

void Database::BeginTrans() {
    Execute(QStringLiteral("BEGIN IMMEDIATE"));
}
void Database::CommitTrans() {
    Execute(QStringLiteral("COMMIT"));
}
void Database::Rollback() {
    if (mDb && !sqlite3_get_autocommit(mDb))
        sqlite3_exec(mDb, "ROLLBACK", nullptr, nullptr, nullptr);
}
bool Database::InTransaction() const {
    return mDb && !sqlite3_get_autocommit(mDb);
}

QString Database::keyColumn(const QString& table) {
    const QString lower = table.toLower();
    const auto found = mKeyColumns.constFind(lower);
    if (found != mKeyColumns.constEnd())
        return *found;
    QString key;
    int keys = 0;
    Recordset rs = OpenRecordset(QStringLiteral("PRAGMA table_info(%1)").arg(table));
    for (; !rs.Eof(); rs.MoveNext()) {
        if (rs.Fields(QStringLiteral("pk")).Long() > 0) {
            ++keys;
            key = rs.Fields(QStringLiteral("name")).Text();
        }
    }
    if (keys != 1)
        key.clear();
    mKeyColumns.insert(lower, key);
    return key;
}

void Database::Savepoint(const QString& name) {
    Execute(QStringLiteral("SAVEPOINT ") + name);
}
void Database::ReleaseSavepoint(const QString& name) {
    Execute(QStringLiteral("RELEASE ") + name);
}
void Database::RollbackToSavepoint(const QString& name) {
    if (!mDb || sqlite3_get_autocommit(mDb))
        return;
    const QByteArray n = name.toUtf8();
    sqlite3_exec(mDb, ("ROLLBACK TO " + n).constData(), nullptr, nullptr, nullptr);
    sqlite3_exec(mDb, ("RELEASE " + n).constData(), nullptr, nullptr, nullptr);
}

// ---------------------------------------------------------------- Recordset

Recordset::Recordset(Database* db, sqlite3_stmt* stmt, const QString& sql, QByteArray text)
    : mDb(db), mStmt(stmt), mSql(sql), mText(std::move(text)), mStatements(db->mStatements) {
    const int n = sqlite3_column_count(stmt);
    mNames.reserve(n);
    for (int i = 0; i < n; ++i)
        mNames << QString::fromUtf8(sqlite3_column_name(stmt, i));
}

Recordset::Recordset(Recordset&& o) noexcept
    : mDb(o.mDb), mStmt(o.mStmt), mSql(std::move(o.mSql)), mText(std::move(o.mText)),
      mStatements(std::move(o.mStatements)), mNames(std::move(o.mNames)),
      mLookups(std::move(o.mLookups)), mEof(o.mEof), mBof(o.mBof), mPosition(o.mPosition),
      mCount(o.mCount), mAnyRow(o.mAnyRow), mEditMode(o.mEditMode),
      mOriginal(std::move(o.mOriginal)), mPending(std::move(o.mPending)) {
    o.mStmt = nullptr;
}

Recordset& Recordset::operator=(Recordset&& o) noexcept {
    if (this != &o) {
        Close();
        mDb = o.mDb;
        mStmt = o.mStmt;
        mSql = std::move(o.mSql);
        mText = std::move(o.mText);
        mStatements = std::move(o.mStatements);
        mNames = std::move(o.mNames);
        mLookups = std::move(o.mLookups);
        mEof = o.mEof;
        mBof = o.mBof;
        mPosition = o.mPosition;
        mCount = o.mCount;
        mAnyRow = o.mAnyRow;
        mEditMode = o.mEditMode;
        mOriginal = std::move(o.mOriginal);
        mPending = std::move(o.mPending);
        o.mStmt = nullptr;
    }
    return *this;
}

Recordset::~Recordset() {
    Close();
}

void Recordset::Close() {
    if (mStmt) {
        if (const std::shared_ptr<StatementCache> kept = mStatements.lock())
            kept->put(std::move(mText), mStmt);
        else
            sqlite3_finalize(mStmt);
        mStmt = nullptr;
    }
    mEof = true;
}

void Recordset::step() {
    if (!mStmt) {
        mEof = true;
        return;
    }
    const int rc = sqlite3_step(mStmt);
    if (rc == SQLITE_ROW) {
        ++mPosition;
        mEof = false;
    } else if (rc == SQLITE_DONE) {
        if (mCount < 0)
            mCount = mPosition + 1;
        mEof = true;
    } else {
        mEof = true;
        sqlite3* h = sqlite3_db_handle(mStmt);
        const int ext = sqlite3_extended_errcode(h);
        throw DbError(mapError(ext), describe(ext, h));
    }
}

void Recordset::MoveFirst() {
    if (!mStmt)
        return;
    sqlite3_reset(mStmt);
    mPosition = -1;
    step();
    mBof = mEof;
}

void Recordset::MoveNext() {
    if (mEof)
        throw DbError(3021, QStringLiteral("No current record."));
    step();
}

void Recordset::MoveLast() {
    if (!mAnyRow)
        throw DbError(3021, QStringLiteral("No current record."));
    if (mCount < 0) {
        while (!mEof)
            step();
    }
    // Step again to the last row.
    sqlite3_reset(mStmt);
    mPosition = -1;
    for (qint64 i = 0; i < mCount; ++i)
        step();
}

qint64 Recordset::RecordCount() const {
    if (!mAnyRow)
        return 0;
    if (mCount >= 0)
        return mCount;
    return mPosition + 1;
}

int Recordset::FieldCount() const {
    return mStmt ? sqlite3_column_count(mStmt) : 0;
}

QString Recordset::FieldName(int index) const {
    return mStmt ? QString::fromUtf8(sqlite3_column_name(mStmt, index)) : QString();
}

int Recordset::FieldIndex(const QString& name) const {
    // Names are looked up once per row by most procedures, so earlier answers are kept by the
    // text's address: a literal's address is its own for good; any other name is checked again.
    const bool literal = !name.data_ptr().isMutable();
    for (const LookupHit& hit : mLookups) {
        if (hit.key == name.constData() && hit.size == name.size()) {
            if (literal ||
                (hit.index >= 0 && mNames.at(hit.index).compare(name, Qt::CaseInsensitive) == 0))
                return hit.index;
            break;
        }
    }
    int found = -1;
    for (int i = 0; i < mNames.size() && found < 0; ++i)
        if (mNames.at(i) == name)
            found = i;
    for (int i = 0; i < mNames.size() && found < 0; ++i)
        if (mNames.at(i).compare(name, Qt::CaseInsensitive) == 0)
            found = i;
    for (LookupHit& hit : mLookups) {
        if (hit.key == name.constData() && hit.size == name.size()) {
            hit.index = found;
            return found;
        }
    }
    if (mLookups.size() < 64)
        mLookups.push_back({name.constData(), name.size(), found});
    return found;
}

Field Recordset::Fields(const QString& name) const {
    const int i = FieldIndex(name);
    if (i < 0)
        throw DbError(3265, QStringLiteral("Item not found in this collection."));
    return Field(this, i);
}

bool Recordset::columnIsNull(int index) const {
    if (mEof || !mStmt)
        throw DbError(3021, QStringLiteral("No current record."));
    return sqlite3_column_type(mStmt, index) == SQLITE_NULL;
}

QVariant Recordset::columnValue(int index) const {
    if (mEof || !mStmt)
        throw DbError(3021, QStringLiteral("No current record."));
    switch (sqlite3_column_type(mStmt, index)) {
    case SQLITE_INTEGER:
        return QVariant(qlonglong(sqlite3_column_int64(mStmt, index)));
    case SQLITE_FLOAT:
        return QVariant(sqlite3_column_double(mStmt, index));
    case SQLITE_NULL:
        return QVariant();
    default: {
        const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(mStmt, index));
        return QVariant(QString::fromUtf8(p, sqlite3_column_bytes(mStmt, index)));
    }
    }
}

QString Recordset::columnText(int index) const {
    if (mEof || !mStmt)
        throw DbError(3021, QStringLiteral("No current record."));
    switch (sqlite3_column_type(mStmt, index)) {
    case SQLITE_INTEGER:
        return QString::number(sqlite3_column_int64(mStmt, index));
    case SQLITE_FLOAT: {
        // The text of a number: 15 significant digits, no exponent for ordinary values.
        const double d = sqlite3_column_double(mStmt, index);
        if (d == std::trunc(d) && std::fabs(d) < 1e15)
            return QString::number(qint64(d));
        return QString::number(d, 'g', 15);
    }
    case SQLITE_NULL:
        return QString();
    default: {
        const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(mStmt, index));
        return QString::fromUtf8(p, sqlite3_column_bytes(mStmt, index));
    }
    }
}

QByteArrayView Recordset::columnUtf8(int index) const {
    if (mEof || !mStmt)
        throw DbError(3021, QStringLiteral("No current record."));
    const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(mStmt, index));
    return p ? QByteArrayView(p, sqlite3_column_bytes(mStmt, index)) : QByteArrayView();
}

double Recordset::columnDouble(int index) const {
    if (mEof || !mStmt)
        throw DbError(3021, QStringLiteral("No current record."));
    switch (sqlite3_column_type(mStmt, index)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
        return sqlite3_column_double(mStmt, index);
    case SQLITE_NULL:
        return 0;
    default:
        return Val(columnText(index));
    }
}

void Recordset::AddNew() {
    mEditMode = EditMode::Add;
    mPending.clear();
}

void Recordset::Edit() {
    if (mEof)
        throw DbError(3021, QStringLiteral("No current record."));
    mEditMode = EditMode::Edit;
    mPending.clear();
    mOriginal.clear();
    for (int i = 0; i < FieldCount(); ++i)
        mOriginal << columnValue(i);
}

void Recordset::SetField(const QString& name, const QVariant& value) {
    if (mEditMode == EditMode::None)
        throw DbError(3020, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    mPending.append({name, value});
}

void Recordset::Update() {
    static const QRegularExpression fromRe(QStringLiteral("\\bFROM\\s+([A-Za-z_][A-Za-z0-9_]*)"),
                                           QRegularExpression::CaseInsensitiveOption);
    if (mEditMode == EditMode::None)
        throw DbError(3020, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    const auto m = fromRe.match(mSql);
    if (!m.hasMatch())
        throw DbError(3027, QStringLiteral("Cannot update. Database or object is read-only."));
    const QString table = m.captured(1);
    if (mEditMode == EditMode::Edit && mPending.isEmpty()) { // nothing changed: nothing to write
        mEditMode = EditMode::None;
        return;
    }
    QStringList names;
    QVariantList values;
    for (const auto& [n, v] : mPending) {
        names << n;
        values << v;
    }
    if (mEditMode == EditMode::Add) {
        QStringList marks;
        for (int i = 0; i < names.size(); ++i)
            marks << QStringLiteral("?");
        mDb->Execute(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                         .arg(table, names.join(QLatin1Char(',')), marks.join(QLatin1Char(','))),
                     values);
    } else {
        QStringList sets, where;
        for (const QString& n : names)
            sets << n + QStringLiteral("=?");
        // The record is found by its key where the table has one, else by all its values.
        const QString key = mDb->keyColumn(table);
        for (int i = 0; !key.isEmpty() && i < mOriginal.size(); ++i) {
            if (!mOriginal.at(i).isNull() && FieldName(i).compare(key, Qt::CaseInsensitive) == 0) {
                values << mOriginal.at(i);
                mDb->Execute(QStringLiteral("UPDATE %1 SET %2 WHERE %3 = ?")
                                 .arg(table, sets.join(QLatin1Char(',')), key),
                             values);
                mEditMode = EditMode::None;
                mPending.clear();
                return;
            }
        }
        for (int i = 0; i < mOriginal.size(); ++i) {
            where << FieldName(i) + QStringLiteral(" IS ?");
            values << mOriginal.at(i);
        }
        mDb->Execute(
            QStringLiteral("UPDATE %1 SET %2 WHERE rowid = (SELECT rowid FROM %1 WHERE %3 "
                           "LIMIT 1)")
                .arg(table, sets.join(QLatin1Char(',')), where.join(QStringLiteral(" AND "))),
            values);
    }
    mEditMode = EditMode::None;
    mPending.clear();
}

// ---------------------------------------------------------------- Field

QVariant Field::Value() const {
    return mRs->columnValue(mIndex);
}
bool Field::IsNull() const {
    return mRs->columnIsNull(mIndex);
}
FieldType Field::Type() const {
    if (mRs->mEof || !mRs->mStmt)
        throw DbError(3021, QStringLiteral("No current record."));
    switch (sqlite3_column_type(mRs->mStmt, mIndex)) {
    case SQLITE_INTEGER:
        return FieldType::Long;
    case SQLITE_FLOAT:
        return FieldType::Double;
    case SQLITE_TEXT:
        return FieldType::Text;
    case SQLITE_BLOB:
        return FieldType::Binary;
    default:
        return FieldType::Null;
    }
}
QString Field::Name() const {
    return mRs->FieldName(mIndex);
}

QString Field::Text() const {
    return mRs->columnText(mIndex);
}

// Numbers are read straight from the column, without a variant in between: lists read a few
// of them on every row.
double Field::Double() const {
    return mRs->columnDouble(mIndex);
}

qint64 Field::Long() const {
    if (mRs->mStmt && !mRs->mEof && sqlite3_column_type(mRs->mStmt, mIndex) == SQLITE_INTEGER)
        return sqlite3_column_int64(mRs->mStmt, mIndex);
    return qint64(std::llround(mRs->columnDouble(mIndex)));
}

QByteArrayView Field::Utf8() const {
    return mRs->columnUtf8(mIndex);
}

// ---------------------------------------------------------------- DBEngine

Database DBEngine::openFile(const QString& path, bool readOnly) {
    if (path.isEmpty() || !QFileInfo(path).isFile())
        throw DbError(DbErr::FileNotFound, QStringLiteral("Could not find file '%1'.").arg(path));
    Database db;
    sqlite3* h = nullptr;
    // A file that nobody may write to (a read-only file) is opened for reading, whoever runs the
    // program: its writes then fail as read-only. One thread uses a connection at a time, so the
    // engine's own locking per call is left out.
    const QFile::Permissions writeBits = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    const bool writable = (QFileInfo(path).permissions() & writeBits) != 0;
    const int flags = SQLITE_OPEN_NOMUTEX |
                      (readOnly || !writable ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE);
    int rc = sqlite3_open_v2(QFile::encodeName(path).constData(), &h, flags, nullptr);
    if (rc != SQLITE_OK) {
        const QString d =
            QStringLiteral("The database engine cannot open the file '%1'. %2")
                .arg(path, QString::fromUtf8(h ? sqlite3_errmsg(h) : sqlite3_errstr(rc)));
        sqlite3_close_v2(h);
        throw DbError(DbErr::CannotOpen, d);
    }
    sqlite3_extended_result_codes(h, 1);
    sqlite3_busy_handler(h, busyHandler, nullptr);
    sqlite3_create_function_v2(h, "Val", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, sqlVal,
                               nullptr, nullptr, nullptr);
    db.mDb = h;
    db.mPath = path;
    // Check that it is a database at all before anything else runs on it.
    char* err = nullptr;
    // A page cache of up to 32 MiB (filled only as pages are read): the reports and long lists
    // walk the stock table in part-number order and look up each item's rows, and with the
    // default 2 MiB they read the same pages from the file again and again.
    rc = sqlite3_exec(h,
                      "PRAGMA synchronous=FULL; PRAGMA foreign_keys=OFF; PRAGMA cache_size=-32768;",
                      nullptr, nullptr, &err);
    sqlite3_free(err);
    if (rc != SQLITE_OK) {
        const QString d = QStringLiteral("The database engine cannot open the file '%1'. %2")
                              .arg(path, describe(rc, h));
        throw DbError(rc == SQLITE_NOTADB ? DbErr::CannotOpen : mapError(rc), d);
    }
    return db;
}

Database DBEngine::OpenDatabase(const QString& path) {
    return openFile(path, false);
}

Database DBEngine::OpenDatabase(const QString& name, bool exclusive, bool readOnly,
                                const QString& connect) {
    Q_UNUSED(exclusive);
    QString path = name;
    QString password;
    bool hasPassword = false;
    for (const QString& part : connect.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const int eq = part.indexOf(QLatin1Char('='));
        if (eq < 0)
            continue;
        const QString key = part.left(eq).trimmed().toUpper();
        const QString value = part.mid(eq + 1);
        if (key == QLatin1String("DATABASE"))
            path = value;
        else if (key == QLatin1String("PWD")) {
            password = value;
            hasPassword = true;
        }
    }
    Database db = openFile(path, readOnly);
    // A file with a password keeps its salted hash; any other password is refused.
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT name FROM sqlite_master WHERE type='table' AND name='qsAccess'"));
    if (!rs.Eof()) {
        rs.Close();
        Recordset pw = db.OpenRecordset(QStringLiteral("SELECT Salt, Hash FROM qsAccess"));
        if (!pw.Eof()) {
            const QString salt = pw.Fields(0).Text();
            const QString hash = pw.Fields(1).Text();
            if (!hasPassword || hashPassword(salt, password) != hash)
                throw DbError(DbErr::NotValidPassword, QStringLiteral("Not a valid password."));
        }
    }
    return db;
}

Database DBEngine::CreateDatabase(const QString& path) {
    if (QFileInfo::exists(path))
        throw DbError(3204, QStringLiteral("Database already exists."));
    sqlite3* h = nullptr;
    int rc = sqlite3_open_v2(QFile::encodeName(path).constData(), &h,
                             SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    if (rc != SQLITE_OK) {
        const QString d = QString::fromUtf8(h ? sqlite3_errmsg(h) : sqlite3_errstr(rc));
        sqlite3_close_v2(h);
        throw DbError(DbErr::CannotOpen, d);
    }
    // The files may live on a network share: a rollback journal, never WAL.
    sqlite3_exec(h, "PRAGMA journal_mode=DELETE; PRAGMA page_size=4096;", nullptr, nullptr,
                 nullptr);
    sqlite3_close_v2(h);
    return openFile(path, false);
}

void DBEngine::SetDatabasePassword(Database& db, const QString& password) {
    QString salt;
    for (int i = 0; i < 16; ++i)
        salt += QString::number(QRandomGenerator::global()->bounded(16), 16);
    db.Execute(QStringLiteral("CREATE TABLE IF NOT EXISTS qsAccess (Salt TEXT, Hash TEXT)"));
    db.Execute(QStringLiteral("DELETE FROM qsAccess"));
    db.Execute(QStringLiteral("INSERT INTO qsAccess (Salt, Hash) VALUES (?, ?)"),
               {salt, hashPassword(salt, password)});
}

void DBEngine::CompactDatabase(const QString& src, const QString& dst) {
    if (QFileInfo::exists(dst))
        throw DbError(3204, QStringLiteral("Database already exists."));
    Database db = openFile(src, false);
    db.Execute(QStringLiteral("VACUUM INTO ?"), {dst});
}

void DBEngine::WriteDatabaseOver(const QString& src, const QString& dst) {
    Database from = openFile(src, true);
    // The read transaction: its shared lock is taken by the first read and kept to the end.
    from.Execute(QStringLiteral("BEGIN"));
    from.OpenRecordset(QStringLiteral("SELECT count(*) FROM sqlite_master"));
    const bool existed = QFileInfo::exists(dst);
    QString message;
    int rc = backupInto(from.mDb, dst, message);
    if ((rc & 0xff) == SQLITE_NOTADB) {
        // Whatever dst holds, nobody can be reading it as a database: a new file is written
        // beside it and put in its place in one step.
        const QString fresh = dst + QStringLiteral("-new");
        QFile::remove(fresh);
        rc = backupInto(from.mDb, fresh, message);
        std::error_code failed;
        if (rc == SQLITE_OK)
            std::filesystem::rename(QFile::encodeName(fresh).toStdString(),
                                    QFile::encodeName(dst).toStdString(), failed);
        if (rc != SQLITE_OK || failed) {
            QFile::remove(fresh);
            if (rc == SQLITE_OK)
                throw DbError(DbErr::Generic, QString::fromStdString(failed.message()));
        }
    } else if (rc != SQLITE_OK && !existed) {
        QFile::remove(dst); // what a failed copy began
    }
    if (rc != SQLITE_OK)
        throw DbError(mapError(rc), message);
    from.Execute(QStringLiteral("COMMIT"));
}

void DBEngine::CopyDatabaseFile(const QString& src, const QString& dst) {
    Database from = openFile(src, false);
    from.Execute(QStringLiteral("BEGIN"));
    from.OpenRecordset(QStringLiteral("SELECT count(*) FROM sqlite_master"));
    // The bytes are read through the connection's own file handle: a second handle on the file
    // would, once closed, drop the locks this process holds on it.
    sqlite3_file* file = nullptr;
    sqlite3_int64 size = 0;
    if (sqlite3_file_control(from.mDb, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
        !file || !file->pMethods || file->pMethods->xFileSize(file, &size) != SQLITE_OK)
        throw DbError(DbErr::Generic, QStringLiteral("Could not read '%1'.").arg(src));
    QSaveFile out(dst);
    out.setDirectWriteFallback(false);
    if (!out.open(QIODevice::WriteOnly))
        throw DbError(DbErr::CannotOpen,
                      QStringLiteral("Could not write '%1'. %2").arg(dst, out.errorString()));
    QByteArray buffer(1 << 20, Qt::Uninitialized);
    for (sqlite3_int64 at = 0; at < size;) {
        const int n = int(std::min<sqlite3_int64>(buffer.size(), size - at));
        const int rc = file->pMethods->xRead(file, buffer.data(), n, at);
        if (rc != SQLITE_OK)
            throw DbError(mapError(rc), describe(rc, nullptr));
        if (out.write(buffer.constData(), n) != n)
            throw DbError(DbErr::Generic,
                          QStringLiteral("Could not write '%1'. %2").arg(dst, out.errorString()));
        at += n;
    }
    if (!out.commit())
        throw DbError(DbErr::Generic,
                      QStringLiteral("Could not write '%1'. %2").arg(dst, out.errorString()));
    from.Execute(QStringLiteral("COMMIT"));
}
