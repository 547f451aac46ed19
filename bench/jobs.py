"""The jobs of the comparison: the same work told to us and to the peer, and how to see that it was done.

What the peer gets, so that the comparison is fair to it:
- one transaction for the whole job (-gt unlimited), which is what our import does and the faster of the two for it;
  synchronous writing, journal and cache stay at its defaults: other values moved its times by less than the noise;
- its spatial index at the default (on), since ours is in our time too;
- the geometry type told beforehand where text doesn't say it, so that it need not look;
- UTF-8 in and out, so that it need not convert;
- exports read a GeoPackage that it made itself; the text export reads one without any attribute but a number, since
  our text form carries none.
- the table of rows as plain CSV, which it reads as texts, as our non-spatial table does; the section that makes objects
  has the same values with declared types.
It stores and writes the attributes of the source where our thematic layer has no place for them; `--variants`
measures it without them as well, and without its index.

Some jobs have no peer: they set twice the work beside the work once.
"""

from dataclasses import dataclass, field
from pathlib import Path
from typing import Callable, Optional

import checks

CRS = "EPSG:32723"
CSV_IN = ["-oo", "GEOM_POSSIBLE_NAMES=WKT", "-oo", "KEEP_GEOM_COLUMNS=NO", "-nlt", "LINESTRING", "-a_srs", CRS]
POINTS_IN = ["-oo", "X_POSSIBLE_NAMES=x", "-oo", "Y_POSSIBLE_NAMES=y", "-oo", "KEEP_GEOM_COLUMNS=NO", "-a_srs", CRS]
NO_INDEX = ["-lco", "SPATIAL_INDEX=NO"]
NO_ATTRIBUTES = ["-select", ""]
RECORDS_PER_FEATURE = 5  # samples, points and rows, as the maker of the data has it
MEMORY_LIMIT = 120e6  # bytes, of the features that are streamed
LARGER_MEMORY_LIMIT = 150e6
FOREIGN_MEMORY_LIMIT = 100e6


@dataclass
class Context:
    """Where things are."""
    kaldex: Path
    peer: str
    data: Path  # what kaldex-bench-data made
    prepared: Path  # databases that the exports read
    count: int  # features in each file
    twice: Path  # polygons with labels, twice as many

    @property
    def records(self):
        return self.count * RECORDS_PER_FEATURE

    def to_geopackage(self, source, target, *options):
        return [self.peer, "-q", "-gt", "unlimited", "-f", "GPKG", target, self.data / source, *options]

    def database(self, target, *words):
        """Our import begins with no database, as the peer's does; making it is part of the time."""
        return [[self.kaldex, "init", target],
                [self.kaldex, "import", words[0], words[1], self.data / words[2], target, *words[3:],
                 "--crs", CRS, "--crs-from", CRS, "--units", "m", "--yes", "--quiet"]]

    def lines_database(self, target):
        return self.database(target, "shapefile", "features", "lines.shp", "bench/lines", "--model", "thematic")

    def polygons_database(self, target, model="thematic", data=None):
        return self.database(target, "shapefile", "features", (data or self.data) / "polygons.shp", "bench/parcels",
                             "--model", model)

    def samples_database(self, target):
        return self.database(target, "ascii", "samples", "samples.txt", "bench/samples", "--model", "numeric")

    def points_database(self, target):
        return self.database(target, "ascii", "points", "points.txt", "bench/points", "--model", "thematic")

    def table(self, target, form, kind, file, category):
        return [[self.kaldex, "init", target],
                [self.kaldex, "import", form, kind, self.data / file, target, category, "--yes", "--quiet"]]

    def classify(self, labels, folder):
        return [[self.kaldex, "classify", "ascii", labels, folder / "out.gpkg", "bench/parcels", "--yes", "--quiet"]]

    def export(self, form, kind, database, layer, target, *words):
        return [[self.kaldex, "export", form, kind, self.prepared / database, layer, target, *words, "--quiet"]]


@dataclass
class Job:
    name: str
    title: str
    limit: float  # time, us / peer, or twice the work / once
    inputs: Callable  # (context, side) -> files to warm
    ours: Callable  # (context, folder) -> commands
    peer: Callable  # (context, folder) -> commands
    check_ours: Callable  # (context, folder)
    check_peer: Callable
    prepare: dict = field(default_factory=dict)  # side -> (database name, (context, target) -> commands)
    variants: dict = field(default_factory=dict)  # name -> extra options of the peer
    memory: Optional[float] = MEMORY_LIMIT  # bytes, ours; None where nothing is promised
    scaling: bool = False  # twice the work stands for ours, the work once for the peer
    changes: bool = False  # works on a copy of what was prepared, "out.gpkg"

    @property
    def sides(self):
        return ("twice", "once") if self.scaling else ("ours", "peer")


def source(*names):
    return lambda context, side: [context.data / name for name in names]


def shapefile_source(base):
    return source(*(base + ending for ending in (".shp", ".shx", ".dbf")))


def prepared(ours, peers):
    return lambda context, side: [context.prepared / (ours if side == "ours" else peers)]


def geopackage(*kinds):
    return lambda context, folder: checks.geopackage(folder / "out.gpkg", kinds, context.count)


def shapefile(context, folder):
    checks.shapefile(folder / "out.shp", context.count)


OUR_LINES = ("ours-lines.gpkg", lambda context, target: context.lines_database(target))
OUR_POLYGONS = ("ours-polygons.gpkg", lambda context, target: context.polygons_database(target))
PEER_LINES = ("peer-lines.gpkg", lambda context, target: [context.to_geopackage("lines.shp", target)])
PEER_POLYGONS = ("peer-polygons.gpkg", lambda context, target: [context.to_geopackage("polygons.shp", target)])
PEER_TEXT = ("peer-text.gpkg", lambda context, target: [context.to_geopackage("lines.csv", target, *CSV_IN)])

IMPORT_VARIANTS = {"no index": NO_INDEX, "no attributes": NO_ATTRIBUTES,
                   "no index, no attributes": NO_INDEX + NO_ATTRIBUTES}


def import_jobs():
    return [
        Job("lines-in", "shapefile lines into a thematic layer", 0.30, shapefile_source("lines"),
            lambda c, folder: c.lines_database(folder / "out.gpkg"),
            lambda c, folder: [c.to_geopackage("lines.shp", folder / "out.gpkg")],
            geopackage("LINE"), geopackage("LINE"), variants=IMPORT_VARIANTS),
        Job("polygons-in", "shapefile polygons into a thematic layer", 0.60, shapefile_source("polygons"),
            lambda c, folder: c.polygons_database(folder / "out.gpkg"),
            lambda c, folder: [c.to_geopackage("polygons.shp", folder / "out.gpkg")],
            geopackage("LINE", "POLYGON"), geopackage("POLYGON"), variants=IMPORT_VARIANTS),
        Job("cadastral-in", "shapefile polygons into a cadastral layer with objects", 1.00,
            shapefile_source("polygons"),
            lambda c, folder: c.polygons_database(folder / "out.gpkg", "cadastral"),
            lambda c, folder: [c.to_geopackage("polygons.shp", folder / "out.gpkg")],
            geopackage("LINE", "POLYGON"), geopackage("POLYGON")),
    ]


def export_jobs():
    return [
        Job("lines-out", "layer to shapefile, lines", 0.35, prepared(OUR_LINES[0], PEER_LINES[0]),
            lambda c, folder: c.export("shapefile", "lines", OUR_LINES[0], "bench/lines", folder / "out.shp"),
            lambda c, folder: [[c.peer, "-q", folder / "out.shp", c.prepared / PEER_LINES[0],
                                "-lco", "ENCODING=UTF-8"]],
            shapefile, shapefile, {"ours": OUR_LINES, "peer": PEER_LINES}, {"no attributes": NO_ATTRIBUTES}),
        Job("polygons-out", "layer to shapefile, polygons with holes", 0.45,
            prepared(OUR_POLYGONS[0], PEER_POLYGONS[0]),
            lambda c, folder: c.export("shapefile", "polygons", OUR_POLYGONS[0], "bench/parcels", folder / "out.shp"),
            lambda c, folder: [[c.peer, "-q", folder / "out.shp", c.prepared / PEER_POLYGONS[0],
                                "-lco", "ENCODING=UTF-8"]],
            shapefile, shapefile, {"ours": OUR_POLYGONS, "peer": PEER_POLYGONS}, {"no attributes": NO_ATTRIBUTES}),
    ]


def text_jobs():
    return [
        Job("ascii-in", "ASCII lines into a layer / CSV with WKT", 0.35,
            lambda c, side: [c.data / ("lines.txt" if side == "ours" else "lines.csv")],
            lambda c, folder: c.database(folder / "out.gpkg", "ascii", "lines", "lines.txt", "bench/lines",
                                         "--model", "thematic"),
            lambda c, folder: [c.to_geopackage("lines.csv", folder / "out.gpkg", *CSV_IN)],
            geopackage("LINE"), geopackage("LINE"), variants={"no index": NO_INDEX}),
        Job("ascii-out", "layer to ASCII lines / CSV with WKT", 0.30, prepared(OUR_LINES[0], PEER_TEXT[0]),
            lambda c, folder: c.export("ascii", "lines", OUR_LINES[0], "bench/lines", folder / "out.txt"),
            lambda c, folder: [[c.peer, "-q", "-f", "CSV", folder / "out.csv", c.prepared / PEER_TEXT[0],
                                "-lco", "GEOMETRY=AS_WKT"]],
            lambda c, folder: checks.text_lines(folder / "out.txt", b"END", c.count + 1),
            lambda c, folder: checks.text_lines(folder / "out.csv", b'"LINESTRING', c.count),
            {"ours": OUR_LINES, "peer": PEER_TEXT}),
    ]


def records(*kinds):
    return lambda context, folder: checks.geopackage(folder / "out.gpkg", kinds, context.records)


def rows(*tables):
    """Each of these, names without their number, holds all rows."""
    return lambda context, folder: checks.table_rows(folder / "out.gpkg", tables, context.records)


def record_lines(name, holds=b""):
    return lambda context, folder: checks.text_lines(folder / name, checks.DIGITS, context.records, holds)


OUR_SAMPLES = ("ours-samples.gpkg", lambda context, target: context.samples_database(target))
OUR_POINTS = ("ours-points.gpkg", lambda context, target: context.points_database(target))
PEER_SAMPLES = ("peer-samples.gpkg", lambda context, target: [context.to_geopackage("samples.shp", target)])
PEER_POINTS = ("peer-points.gpkg", lambda context, target: [context.to_geopackage("points.csv", target, *POINTS_IN)])


def point_jobs():
    return [
        Job("samples-in", "ASCII samples into a numeric layer / shapefile of points", 0.24,
            lambda c, side: [c.data / ("samples.txt" if side == "ours" else "samples.shp")],
            lambda c, folder: c.samples_database(folder / "out.gpkg"),
            lambda c, folder: [c.to_geopackage("samples.shp", folder / "out.gpkg")],
            records("POINT"), records("POINT"), variants={"no index": NO_INDEX}, memory=LARGER_MEMORY_LIMIT),
        Job("points-in", "ASCII 2D points of 100 classes into a layer / CSV", 0.35,
            lambda c, side: [c.data / ("points.txt" if side == "ours" else "points.csv")],
            lambda c, folder: c.points_database(folder / "out.gpkg"),
            lambda c, folder: [c.to_geopackage("points.csv", folder / "out.gpkg", *POINTS_IN)],
            records("POINT"), records("POINT"), variants={"no index": NO_INDEX}, memory=LARGER_MEMORY_LIMIT),
        Job("samples-out", "layer to ASCII samples / CSV", 0.30, prepared(OUR_SAMPLES[0], PEER_SAMPLES[0]),
            lambda c, folder: c.export("ascii", "samples", OUR_SAMPLES[0], "bench/samples", folder / "out.txt"),
            lambda c, folder: [[c.peer, "-q", "-f", "CSV", folder / "out.csv", c.prepared / PEER_SAMPLES[0],
                                "-lco", "GEOMETRY=AS_XYZ"]],
            record_lines("out.txt"), record_lines("out.csv"), {"ours": OUR_SAMPLES, "peer": PEER_SAMPLES},
            memory=LARGER_MEMORY_LIMIT),
        Job("points-out", "layer to ASCII 2D points / CSV", 0.30, prepared(OUR_POINTS[0], PEER_POINTS[0]),
            lambda c, folder: c.export("ascii", "points", OUR_POINTS[0], "bench/points", folder / "out.txt",
                                       "--separator", ";"),
            lambda c, folder: [[c.peer, "-q", "-f", "CSV", folder / "out.csv", c.prepared / PEER_POINTS[0],
                                "-lco", "GEOMETRY=AS_XY"]],
            record_lines("out.txt", b"  ;  "), record_lines("out.csv"), {"ours": OUR_POINTS, "peer": PEER_POINTS},
            memory=LARGER_MEMORY_LIMIT),
    ]


def table_jobs():
    peer = {"peer": lambda c, folder: [c.to_geopackage("rows.csv", folder / "out.gpkg")],
            "check_peer": rows("rows")}
    return [
        Job("table-in", "CSV of 8 columns into a non-spatial table", 0.80, source("rows.csv"),
            lambda c, folder: c.table(folder / "out.gpkg", "csv", "nonspatial", "rows.csv", "rows"),
            check_ours=rows("CG"), memory=LARGER_MEMORY_LIMIT, **peer),
        Job("objects-in", "ASCII table that creates objects with attributes / CSV", 2.00,
            lambda c, side: [c.data / ("rows.txt" if side == "ours" else "rows.csv")],
            lambda c, folder: c.table(folder / "out.gpkg", "ascii", "table", "rows.txt", "imoveis"),
            check_ours=rows("OJ", "CG"), memory=LARGER_MEMORY_LIMIT, **peer),
    ]


def parcels(model, twice):
    """A layer without labels, and how it is made."""
    name = f"parcels-{model}{'-twice' if twice else ''}.gpkg"
    return name, lambda context, target: context.polygons_database(target, model,
                                                                   context.twice if twice else context.data)


def scaling_job(name, title, model, labels, check):
    once, twice = parcels(model, False), parcels(model, True)
    return Job(name, title, 2.20,
               lambda c, side: [(c.twice if side == "twice" else c.data) / labels],
               lambda c, folder: c.classify(c.twice / labels, folder),
               lambda c, folder: c.classify(c.data / labels, folder),
               lambda c, folder: check(folder / "out.gpkg", 2 * c.count),
               lambda c, folder: check(folder / "out.gpkg", c.count),
               {"twice": twice, "once": once}, memory=LARGER_MEMORY_LIMIT, scaling=True, changes=True)


def scaling_jobs():
    return [scaling_job("classify", "labels give polygons their classes", "thematic", "classes.txt",
                        checks.classified_polygons),
            scaling_job("bind-objects", "labels make objects of polygons", "cadastral", "objects.txt",
                        checks.bound_objects)]


# The peer has two drivers of KML, and this is the faster of them for either direction.
KML_DRIVER = ["--config", "OGR_SKIP", "LIBKML"]


def kml_database(context, target, crs):
    return [[context.kaldex, "init", target],
            [context.kaldex, "import", "kml", "lines", context.data / "placemarks.kml", target, "bench/marks",
             "--crs", crs, "--yes", "--quiet"]]


def foreign_jobs():
    """Documents have half as many features as the other files: a KML document is held in memory by its handler."""
    ours = ("ours-marks.gpkg", lambda context, target: kml_database(context, target, CRS))
    peer = ("peer-marks.gpkg", lambda context, target: [
        context.to_geopackage("placemarks.kml", target, "-nlt", "LINESTRING", "-t_srs", CRS, *KML_DRIVER)])
    return [
        Job("kml-in", "KML lines into a layer of longitudes and latitudes", 0.35, source("placemarks.kml"),
            lambda c, folder: kml_database(c, folder / "out.gpkg", "EPSG:4326"),
            lambda c, folder: [c.to_geopackage("placemarks.kml", folder / "out.gpkg", "-nlt", "LINESTRING", *KML_DRIVER)],
            lambda c, folder: checks.geopackage(folder / "out.gpkg", ("LINE",), c.count // 2),
            lambda c, folder: checks.geopackage(folder / "out.gpkg", ("LINE",), c.count // 2),
            variants={"no index": NO_INDEX}, memory=FOREIGN_MEMORY_LIMIT),
        Job("kml-out", "layer in UTM to KML lines", 0.40, prepared(ours[0], peer[0]),
            lambda c, folder: c.export("kml", "lines", ours[0], "bench/marks", folder / "out.kml"),
            lambda c, folder: [[c.peer, "-q", "-f", "KML", folder / "out.kml", c.prepared / peer[0], *KML_DRIVER]],
            lambda c, folder: checks.occurrences(folder / "out.kml", b"<Placemark", c.count // 2),
            lambda c, folder: checks.occurrences(folder / "out.kml", b"<Placemark", c.count // 2),
            {"ours": ours, "peer": peer}, memory=FOREIGN_MEMORY_LIMIT),
        Job("ungenerate-in", "ungenerate lines into a layer / CSV with WKT", 0.35,
            lambda c, side: [c.data / ("lines.gen" if side == "ours" else "lines.csv")],
            lambda c, folder: c.database(folder / "out.gpkg", "arcinfo", "lines", "lines.gen", "bench/lines",
                                         "--model", "thematic"),
            lambda c, folder: [c.to_geopackage("lines.csv", folder / "out.gpkg", *CSV_IN)],
            geopackage("LINE"), geopackage("LINE"), variants={"no index": NO_INDEX},
            memory=FOREIGN_MEMORY_LIMIT),
    ]


def drawing_jobs():
    """Of five entities two are lines, two polylines and one is a point. The peer's writer has no place for fields."""
    def entities(c, folder):
        points = sum(1 for i in range(c.count // 2) if i // 10 % 5 == 4)  # ten of each kind by turns
        checks.geopackage(folder / "out.gpkg", ("LINE",), c.count // 2 - points)
        checks.geopackage(folder / "out.gpkg", ("POINT",), points)

    return [
        Job("dxf-in", "DXF lines, polylines and points of ten layers into a layer", 0.40, source("drawing.dxf"),
            lambda c, folder: c.database(folder / "out.gpkg", "dxf", "lines", "drawing.dxf", "bench/drawing",
                                         "--model", "thematic"),
            lambda c, folder: [c.to_geopackage("drawing.dxf", folder / "out.gpkg", "-a_srs", CRS)],
            entities, lambda c, folder: checks.geopackage(folder / "out.gpkg", ("GEOMETRY",), c.count // 2),
            variants=IMPORT_VARIANTS, memory=FOREIGN_MEMORY_LIMIT),
        Job("dxf-out", "layer to DXF lines", 0.15, prepared(OUR_LINES[0], PEER_LINES[0]),
            lambda c, folder: c.export("dxf", "lines", OUR_LINES[0], "bench/lines", folder / "out.dxf"),
            lambda c, folder: [[c.peer, "-q", "-f", "DXF", folder / "out.dxf", c.prepared / PEER_LINES[0],
                                *NO_ATTRIBUTES]],
            lambda c, folder: checks.text_lines(folder / "out.dxf", b"POLYLINE", c.count),
            lambda c, folder: checks.text_lines(folder / "out.dxf", b"LWPOLYLINE", c.count),
            {"ours": OUR_LINES, "peer": PEER_LINES}, memory=FOREIGN_MEMORY_LIMIT),
    ]


def all_jobs():
    return (import_jobs() + export_jobs() + text_jobs() + point_jobs() + table_jobs() + scaling_jobs() +
            foreign_jobs() + drawing_jobs())
