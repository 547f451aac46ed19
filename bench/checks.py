"""Looks whether a run made what it should have made: a fast run that lost features would be no result."""

import sqlite3
import struct

from measure import JobFailed


def feature_counts(path):
    """Rows and index entries of a GeoPackage by geometry type, as the file's own tables tell them."""
    counts = {}
    connection = sqlite3.connect(f"file:{path}?mode=ro", uri=True)
    try:
        tables = connection.execute(
            "SELECT table_name, column_name, upper(geometry_type_name) FROM gpkg_geometry_columns").fetchall()
        for table, column, kind in tables:
            rows = connection.execute(f'SELECT count(*) FROM "{table}"').fetchone()[0]
            index = f"rtree_{table}_{column}_rowid"
            known = connection.execute("SELECT count(*) FROM sqlite_master WHERE name = ?", (index,)).fetchone()[0]
            indexed = connection.execute(f'SELECT count(*) FROM "{index}"').fetchone()[0] if known else 0
            before = counts.get(kind, (0, 0))
            counts[kind] = (before[0] + rows, before[1] + indexed)
    finally:
        connection.close()
    return counts


def geopackage(path, kinds, at_least, indexed=True):
    """Each of the kinds ("LINE", "POLYGON") has its rows, and an index that holds them."""
    try:
        counts = feature_counts(path)
    except sqlite3.Error as error:
        raise JobFailed(f"{path.name}: {error}") from error
    for kind in kinds:
        rows = sum(count[0] for name, count in counts.items() if kind in name)
        entries = sum(count[1] for name, count in counts.items() if kind in name)
        if rows < at_least:
            raise JobFailed(f"{path.name}: {rows} rows of {kind}, {at_least} expected ({counts})")
        if indexed and entries < at_least:
            raise JobFailed(f"{path.name}: {entries} of {rows} rows of {kind} in the spatial index")


def shapefile(path, expected):
    with open(path.with_suffix(".shx"), "rb") as index, open(path.with_suffix(".dbf"), "rb") as table:
        words = struct.unpack(">i", index.read(28)[24:])[0]
        rows = struct.unpack("<i", table.read(8)[4:])[0]
    shapes = (words * 2 - 100) // 8
    if shapes != expected or rows != expected:
        raise JobFailed(f"{path.name}: {shapes} shapes and {rows} rows, {expected} expected")


DIGITS = tuple(b"%d" % digit for digit in range(10))


def text_lines(path, begin, expected, holds=b""):
    """How many lines begin with these bytes, or with one of several, and hold those."""
    with open(path, "rb") as file:
        found = sum(1 for line in file if line.startswith(begin) and holds in line)
    if found != expected:
        raise JobFailed(f"{path.name}: {found} lines that begin with {begin!r}, {expected} expected")


def numbers(path, *queries):
    connection = sqlite3.connect(f"file:{path}?mode=ro", uri=True)
    try:
        return [connection.execute(query).fetchone()[0] for query in queries]
    except sqlite3.Error as error:
        raise JobFailed(f"{path.name}: {error}") from error
    finally:
        connection.close()


def attribute_tables(path, name):
    """Tables of attributes of this name, with a number behind it or without."""
    connection = sqlite3.connect(f"file:{path}?mode=ro", uri=True)
    try:
        tables = connection.execute("SELECT table_name FROM gpkg_contents WHERE data_type = 'attributes'").fetchall()
    finally:
        connection.close()
    return [table for (table,) in tables if table.rstrip("0123456789") == name]


def table_rows(path, names, expected):
    for name in names:
        found = sum(numbers(path, *(f'SELECT count(*) FROM "{table}"' for table in attribute_tables(path, name))))
        if found != expected:
            raise JobFailed(f"{path.name}: {found} rows of {name}, {expected} expected")


def classified_polygons(path, expected):
    found = numbers(path, "SELECT count(*) FROM parcels_1_polygons WHERE class_id <> 0")[0]
    if found != expected:
        raise JobFailed(f"{path.name}: {found} polygons have a class, {expected} expected")


def bound_objects(path, expected):
    """Each label's object, in a category of its own, stands for one polygon."""
    category = "(SELECT id FROM kdx_categories WHERE name = 'lotes')"
    found = numbers(path, f"SELECT count(DISTINCT GANCHORID) FROM GA000001 WHERE CATEGORIA = {category}")[0]
    if found != expected:
        raise JobFailed(f"{path.name}: {found} objects have their place, {expected} expected")


def occurrences(path, word, expected):
    """How often these bytes stand in the file."""
    found, tail = 0, b""
    with open(path, "rb") as file:
        while block := file.read(1 << 20):
            block = tail + block
            found += block.count(word)
            tail = block[len(block) - len(word) + 1:]
    if found != expected:
        raise JobFailed(f"{path.name}: {found} times {word.decode()}, {expected} expected")
