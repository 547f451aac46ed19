"""The jobs of the comparison: the same work told to us and to the peer, and how to see that it was done.

What the peer gets, so that the comparison is fair to it:
- one transaction for the whole job (-gt unlimited), which is what our import does and the faster of the two for it;
  synchronous writing, journal and cache stay at its defaults: other values moved its times by less than the noise;
- its spatial index at the default (on), since ours is in our time too;
- the geometry type told beforehand where text doesn't say it, so that it need not look;
- UTF-8 in and out, so that it need not convert;
- exports read a GeoPackage that it made itself; the text export reads one without any attribute but a number, since
  our text form carries none.
It stores and writes the attributes of the source where our thematic layer has no place for them; `--variants`
measures it without them as well, and without its index.
"""

from dataclasses import dataclass, field
from pathlib import Path
from typing import Callable

import checks

CRS = "EPSG:32723"
CSV_IN = ["-oo", "GEOM_POSSIBLE_NAMES=WKT", "-oo", "KEEP_GEOM_COLUMNS=NO", "-nlt", "LINESTRING", "-a_srs", CRS]
NO_INDEX = ["-lco", "SPATIAL_INDEX=NO"]
NO_ATTRIBUTES = ["-select", ""]


@dataclass
class Context:
    """Where things are."""
    kaldex: Path
    peer: str
    data: Path  # what kaldex-bench-data made
    prepared: Path  # databases that the exports read
    count: int  # features in each file

    def to_geopackage(self, source, target, *options):
        return [self.peer, "-q", "-gt", "unlimited", "-f", "GPKG", target, self.data / source, *options]

    def database(self, target, *words):
        """Our import begins with no database, as the peer's does; making it is part of the time."""
        return [[self.kaldex, "init", target],
                [self.kaldex, "import", words[0], words[1], self.data / words[2], target, *words[3:],
                 "--crs", CRS, "--crs-from", CRS, "--units", "m", "--yes", "--quiet"]]

    def lines_database(self, target):
        return self.database(target, "shapefile", "features", "lines.shp", "bench/lines", "--model", "thematic")

    def polygons_database(self, target, model="thematic"):
        return self.database(target, "shapefile", "features", "polygons.shp", "bench/parcels", "--model", model)

    def export(self, form, kind, database, layer, target):
        return [[self.kaldex, "export", form, kind, self.prepared / database, layer, target, "--quiet"]]


@dataclass
class Job:
    name: str
    title: str
    limit: float  # time, us / peer
    inputs: Callable  # (context, side) -> files to warm
    ours: Callable  # (context, folder) -> commands
    peer: Callable  # (context, folder) -> commands
    check_ours: Callable  # (context, folder)
    check_peer: Callable
    prepare: dict = field(default_factory=dict)  # side -> (database name, (context, target) -> commands)
    variants: dict = field(default_factory=dict)  # name -> extra options of the peer


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


def all_jobs():
    return import_jobs() + export_jobs() + text_jobs()
