#pragma once

#include <string>

/// Makes chosen calls fail: the system calls of the program's own code, those that SQLite makes, and the calls of
/// SQLite itself. The linker sends the program's calls here; SQLite's come through its table of system calls.
/// State of the process; a test forks before it arms a fault.
namespace FaultPoints {

enum class Layer { systemCall, sqliteCall };
enum class Lasting { once, forGood };

/// From now on the n-th call of the layer (from 1) fails with `error` (an errno value; unused for SQLite's calls, which
/// answer SQLITE_IOERR), and so do all later ones where it is for good.
void failAt(Layer layer, long n, Lasting lasting, int error);

/// From now on the n-th `sqlite3_step` of the program (from 1) kills the process.
void killAtStep(long n);

/// From now on every call that may be interrupted is, once, before it is let through; reads give at most 7 bytes.
void interruptEverything();

/// Whether the fault came to pass, and the SQL of the statement that it hit, where there was one.
bool struck();
std::string struckSql();

/// Counts since the process began: openings of session logs by the program.
long logsOpened();

} // namespace FaultPoints
