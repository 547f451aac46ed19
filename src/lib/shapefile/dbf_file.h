#ifndef KALDEX_SHAPEFILE_DBF_FILE_H
#define KALDEX_SHAPEFILE_DBF_FILE_H

#include <shapefil.h>

// The files below the attribute table library. Its own ones go through stdio and seek ahead of every row,
// which empties stdio's buffer each time: two system calls a row. These keep a window of the file in memory,
// seek inside it for nothing, and remember a write that failed.

namespace kaldex {

// As DBFCreate and DBFOpen; null if that fails. The new table's language byte tells ISO 8859-1.
DBFHandle createDbf(const char* path);
DBFHandle openDbf(const char* path, const char* access);

// False once a write of the table has failed; what is still in memory isn't known to be good.
bool dbfWrites(DBFHandle table);
// As DBFClose; false if not all of the table reached the file.
bool closeDbf(DBFHandle table);
// Frees the table and closes the file without writing anything more.
void abandonDbf(DBFHandle table);

}  // namespace kaldex

#endif
