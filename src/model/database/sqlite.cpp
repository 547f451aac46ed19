#include "model/database/sqlite.h"

#include <algorithm>
#include <map>
#include <mutex>

#include "kaldex/model/exception.h"

namespace kaldex {

namespace {

SException::Kind kindOf(int code) {
  // The rest of what a full disk has undone.
  if (code == SQLITE_CONSTRAINT_COMMITHOOK) return SException::Kind::diskFull;
  switch (code & 0xff) {
    case SQLITE_FULL:
    case SQLITE_IOERR:
      return SException::Kind::diskFull;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return SException::Kind::busy;
    default:
      return SException::Kind::database;
  }
}

[[noreturn]] void throwError(sqlite3* handle) {
  const int code = sqlite3_extended_errcode(handle);
  const bool refused = code == SQLITE_CONSTRAINT_COMMITHOOK;
  throw SException(QString::fromUtf8(refused ? sqlite3_errstr(SQLITE_FULL) : sqlite3_errmsg(handle)),
                   kindOf(code));
}

/// Keeps the other thread from the handle between a failure and the reading of its message.
class HandleLock {
 public:
  explicit HandleLock(sqlite3* handle) : mutex_(sqlite3_db_mutex(handle)) { sqlite3_mutex_enter(mutex_); }
  HandleLock(const HandleLock&) = delete;
  HandleLock& operator=(const HandleLock&) = delete;
  ~HandleLock() { sqlite3_mutex_leave(mutex_); }

 private:
  sqlite3_mutex* mutex_;
};

}  // namespace

Statement::Statement(sqlite3* handle, const std::string& sql, WriteQueue* queue)
    : handle_(handle), queue_(queue) {
  settle();
  const int size = static_cast<int>(sql.size()) + 1;
  if (sqlite3_prepare_v3(handle, sql.c_str(), size, SQLITE_PREPARE_PERSISTENT, &statement_, nullptr) !=
      SQLITE_OK) {
    throwError(handle);
  }
}

Statement& Statement::operator=(Statement&& other) noexcept {
  std::swap(handle_, other.handle_);
  std::swap(statement_, other.statement_);
  std::swap(queue_, other.queue_);
  return *this;
}

void Statement::bind(int parameter, const QString& value) {
  if (value.isNull()) return bindNull(parameter);
  settle();
  const QByteArray utf8 = value.toUtf8();
  check(sqlite3_bind_text(statement_, parameter, utf8.constData(), utf8.size(), SQLITE_TRANSIENT));
}

void Statement::bind(int parameter, const std::string& value) {
  settle();
  check(sqlite3_bind_text(statement_, parameter, value.data(), static_cast<int>(value.size()),
                          SQLITE_TRANSIENT));
}

void Statement::bindBorrowedText(int parameter, const char* text, size_t size) {
  settle();
  check(sqlite3_bind_text(statement_, parameter, text, static_cast<int>(size), SQLITE_STATIC));
}

void Statement::bindBorrowedBlob(int parameter, const void* data, size_t size) {
  settle();
  check(sqlite3_bind_blob64(statement_, parameter, data, size, SQLITE_STATIC));
}

bool Statement::step() {
  settle();
  const HandleLock lock(handle_);
  const int result = sqlite3_step(statement_);
  if (result == SQLITE_ROW) return true;
  if (result == SQLITE_DONE) return false;
  const QString message = QString::fromUtf8(sqlite3_errmsg(handle_));
  const SException::Kind kind = kindOf(result);
  sqlite3_reset(statement_);
  throw SException(message, kind);
}

void Statement::run() {
  while (step()) {
  }
  reset();
}

void Statement::finalize() noexcept {
  if (statement_ == nullptr) return;
  waitForQueue();
  sqlite3_finalize(statement_);
  statement_ = nullptr;
}

QString Statement::text(int column) const {
  const char* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  if (text == nullptr) return QString();
  return QString::fromUtf8(text, sqlite3_column_bytes(statement_, column));
}

std::string Statement::utf8(int column) const {
  const char* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  if (text == nullptr) return std::string();
  return std::string(text, static_cast<size_t>(sqlite3_column_bytes(statement_, column)));
}

std::string_view Statement::view(int column) const {
  const char* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  if (text == nullptr) return std::string_view();
  return std::string_view(text, static_cast<size_t>(sqlite3_column_bytes(statement_, column)));
}

const unsigned char* Statement::blob(int column, size_t& size) const {
  const void* data = sqlite3_column_blob(statement_, column);
  size = static_cast<size_t>(sqlite3_column_bytes(statement_, column));
  return static_cast<const unsigned char*>(data);
}

void Statement::fail() const {
  throwError(handle_);
}

namespace {

// Connections by handles that are not their own. Databases may be opened by several threads, each by one.
struct KnownConnections {
  std::mutex mutex;
  std::map<sqlite3*, SqliteConnection*> byHandle;
};

KnownConnections& knownConnections() {
  static KnownConnections known;
  return known;
}

}  // namespace

void SqliteConnection::settle(sqlite3* handle) {
  SqliteConnection* connection = nullptr;
  {
    KnownConnections& known = knownConnections();
    const std::lock_guard<std::mutex> lock(known.mutex);
    const auto entry = known.byHandle.find(handle);
    if (entry != known.byHandle.end()) connection = entry->second;
  }
  if (connection != nullptr) connection->queue_.settle();
}

SqliteConnection::SqliteConnection(sqlite3* borrowed) : handle_(borrowed) {
  configure();
  KnownConnections& known = knownConnections();
  const std::lock_guard<std::mutex> lock(known.mutex);
  known.byHandle[handle_] = this;
}

SqliteConnection::SqliteConnection(const QString& path) : owned_(true) {
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX;
  if (sqlite3_open_v2(path.toUtf8().constData(), &handle_, flags, nullptr) != SQLITE_OK) {
    const QString message = QString::fromUtf8(sqlite3_errmsg(handle_));
    sqlite3_close(handle_);
    throw SException(message);
  }
  configure();
}

SqliteConnection::~SqliteConnection() {
  queue_.abandon();
  if (!owned_) {
    KnownConnections& known = knownConnections();
    const std::lock_guard<std::mutex> lock(known.mutex);
    known.byHandle.erase(handle_);
  }
  sqlite3_commit_hook(handle_, nullptr, nullptr);
  if (inTransaction_) sqlite3_exec(handle_, "ROLLBACK", nullptr, nullptr, nullptr);
  if (owned_) sqlite3_close_v2(handle_);
}

void SqliteConnection::configure() {
  // The rollback journal beats WAL for one bulk load; NORMAL keeps a killed process harmless. 16 MiB of page
  // cache is enough for appending and keeps an import's memory flat. Statement journals of the blocks stay in
  // memory.
  // Pages of 8 KiB, which only an empty file takes, load about a tenth faster than the usual ones: rows of a
  // few hundred bytes.
  exec("PRAGMA page_size=8192");
  exec("PRAGMA journal_mode=DELETE");
  exec("PRAGMA synchronous=NORMAL");
  exec("PRAGMA cache_size=-16384");
  exec("PRAGMA temp_store=MEMORY");
  exec("PRAGMA foreign_keys=OFF");
  sqlite3_extended_result_codes(handle_, 1);
  sqlite3_busy_timeout(handle_, 5000);
  sqlite3_commit_hook(handle_, &SqliteConnection::refuseLoneCommit, this);
}

// A failure (of a full disk, say) may make SQLite undo the whole transaction by itself. What comes behind
// would then go into the file statement by statement, and stay there after all else was taken back.
int SqliteConnection::refuseLoneCommit(void* connection) {
  const auto* const self = static_cast<SqliteConnection*>(connection);
  return self->inTransaction_ && !self->committing_ ? 1 : 0;
}

bool SqliteConnection::isTransactionLost() const {
  return inTransaction_ && sqlite3_get_autocommit(handle_) != 0;
}

void SqliteConnection::exec(const std::string& sql) {
  queue_.settle();
  char* message = nullptr;
  const int result = sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, &message);
  if (result == SQLITE_OK) return;
  const QString text = QString::fromUtf8(message != nullptr ? message : sqlite3_errmsg(handle_));
  sqlite3_free(message);
  throw SException(text, kindOf(result));
}

void SqliteConnection::execSchema(const std::string& sql) {
  for (TransactionListener* listener : listeners_) listener->releaseCursors();
  beginChange();
  exec(sql);
}

std::int64_t SqliteConnection::scalar(const std::string& sql, std::int64_t fallback) {
  Statement statement = prepare(sql);
  return statement.step() && !statement.isNull(0) ? statement.integer(0) : fallback;
}

bool SqliteConnection::tableExists(const std::string& name) {
  Statement statement =
      prepare("SELECT 1 FROM sqlite_master WHERE type IN ('table','view') AND name = ?1 COLLATE NOCASE");
  statement.bindBorrowedText(1, name.data(), name.size());
  return statement.step();
}

void SqliteConnection::begin() {
  // Begun for a change: a transaction that reads before it writes is refused at once while another program
  // writes, without the wait that the connection asks for. A read-only file has no lock to wait for.
  exec(sqlite3_db_readonly(handle_, "main") == 1 ? "BEGIN" : "BEGIN IMMEDIATE");
  inTransaction_ = true;
}

void SqliteConnection::commit() {
  if (!blocks_.empty()) return;
  // Listeners may still hold changes that open the transaction.
  notifyCommit();
  if (!inTransaction_) return;
  // What still waits belongs into the transaction, or nowhere.
  queue_.settle();
  committing_ = true;
  try {
    exec("COMMIT");
  } catch (...) {
    committing_ = false;
    throw;
  }
  committing_ = false;
  inTransaction_ = false;
}

void SqliteConnection::rollback() {
  queue_.abandon();
  if (!blocks_.empty()) {
    for (TransactionListener* listener : listeners_) listener->releaseCursors();
    if (!isTransactionLost()) exec("ROLLBACK TO kdx" + std::to_string(blocks_.size()));
    notifyRollback();
    return;
  }
  for (TransactionListener* listener : listeners_) listener->releaseCursors();
  // SQLite may have rolled back by itself (disk full): then there is nothing left to undo.
  if (inTransaction_ && sqlite3_get_autocommit(handle_) == 0) exec("ROLLBACK");
  inTransaction_ = false;
  notifyRollback();
}

void SqliteConnection::beginBlock() {
  // What was changed before the block must not fall with it.
  notifyCommit();
  const bool opened = !inTransaction_;
  beginChange();
  if (isTransactionLost())
    throw SException(QString::fromUtf8(sqlite3_errstr(SQLITE_ABORT_ROLLBACK)), SException::Kind::diskFull);
  exec("SAVEPOINT kdx" + std::to_string(blocks_.size() + 1));
  blocks_.push_back({opened});
}

void SqliteConnection::endBlock(bool keep) {
  const Block block = blocks_.back();
  const std::string name = "kdx" + std::to_string(blocks_.size());
  if (keep) {
    notifyCommit();
    exec("RELEASE " + name);
    blocks_.pop_back();
    if (block.openedTransaction && blocks_.empty()) commit();
    return;
  }
  queue_.abandon();
  for (TransactionListener* listener : listeners_) listener->releaseCursors();
  blocks_.pop_back();
  if (sqlite3_get_autocommit(handle_) == 0) {
    exec("ROLLBACK TO " + name);
    exec("RELEASE " + name);
    if (block.openedTransaction && blocks_.empty()) exec("ROLLBACK");
  }
  // Blocks around a lost one are lost, too: until the last of them ends nothing may be changed.
  if (block.openedTransaction || (blocks_.empty() && isTransactionLost())) inTransaction_ = false;
  notifyRollback();
}

void SqliteConnection::addListener(TransactionListener* listener) {
  listeners_.push_back(listener);
}

void SqliteConnection::removeListener(TransactionListener* listener) {
  listeners_.erase(std::remove(listeners_.begin(), listeners_.end(), listener), listeners_.end());
}

void SqliteConnection::notifyCommit() {
  // By index: a listener's work may make another one (an index built on the way).
  for (size_t i = 0; i < listeners_.size(); ++i) listeners_[i]->beforeCommit();
}

void SqliteConnection::notifyRollback() {
  for (size_t i = 0; i < listeners_.size(); ++i) listeners_[i]->afterRollback();
}

namespace {

std::string quoted(const std::string& text, char quote) {
  std::string result(1, quote);
  for (char c : text) {
    result += c;
    if (c == quote) result += c;
  }
  return result += quote;
}

}  // namespace

std::string quotedName(const QString& name) {
  return quoted(name.toStdString(), '"');
}
std::string quotedName(const std::string& name) {
  return quoted(name, '"');
}
std::string quotedText(const QString& text) {
  return quoted(text.toStdString(), '\'');
}

}  // namespace kaldex
