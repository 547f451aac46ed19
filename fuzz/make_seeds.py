#!/usr/bin/env python3
"""Makes the seeds of the fuzz targets: small files that are in order, and what is known to upset readers.

    fuzz/make_seeds.py [FOLDER]     FOLDER is fuzz/seeds by default; one folder a target, the same bytes every time

The form of the inputs is told at the head of each target's source.
"""

import io
import pathlib
import struct
import sys
import zipfile

# --- ASCII -----------------------------------------------------------------------------------------------------------

ASCII_JOBS = {name: number for number, name in enumerate(
    ["lines", "network", "breaks", "contours", "samples", "points3d", "points", "places", "labels", "object_labels",
     "node_labels", "table", "new_table", "texts", "turns"])}
METRES, KILOMETRES, DEGREES = 0, 1, 4
FOREIGN, SEMICOLON = 0x20, 0x40  # source projection other than the layer's; a separator is set
YES, NO = 0xFF, 0x00

HEADER = """
//Arquivo ASCII gerado pelo Sistema KALDEX
//Projeto: Projeto - Plano de informação: thematic
//Categoria: Categoria 4 - Modelo: THEMATICMODEL
PROJECTION\tUTM/SAD69, HEMIS -1, ORIG.LAT n 0 00 00.00, ORIG.LONG o 45 00 00.00, LAT1 n 0 00 00.00, LAT2 n 0 00 00.00
DATUM\tSAD69, Prd 6378160.000000, Pflt 0.003352891869, Pdx -57.00000000, Pdy 1.00000000, Pdz -41.00000000
OFFSETX  500000.000000   OFFSETY  10000000.000000   SCALEFACTOR  0.999600
BOX\t0.000000, 0.000000, 10000000.000000, 100000000.000000
UNITS Metros
SCALE\t25000.000000"""

POINTS = "\n500000.000000     7000000.000000\n500100.500000     7000050.250000\n500200.000000     7000000.000000"
ANGLES = "\n o 45 00 00.0000   s 23 10 05.2000\n o 45 00 10.0000   s 23 10 15.2000"


def section(keyword, records, header=HEADER, info=""):
    return f"\n{keyword}\nINFO\n//Arcos sem Topologia{header}{info}\nINFO_END{records}\nEND\n"


def ascii_sections():
    lines = POINTS + "\nEND" + POINTS + "\nEND"
    contours = "\nLINE3D\nHEIGHT 100.000000" + POINTS + "\nEND\nLINE3D-MASTER\nHEIGHT 150.5" + ANGLES + "\nEND"
    points3d = "\nPOINT3D\n500000.0   7000000.0   612.5\n500001.0  7000001.0  -1e3\nEND"
    heights = "\nPOINT3D\n o 45 00 00.00   s 23 10 05.20   z 612.5\nEND"
    cases = {
        "lines": ("lines", METRES, section("LINES", lines)),
        "lines_in_km": ("lines", KILOMETRES, section("LINES", lines)),
        "lines_as_angles": ("lines", METRES, section("LINES", ANGLES + "\nEND")),
        "lines_of_other_datum": ("lines", FOREIGN, section("LINES", ANGLES + "\nEND")),
        "lines_in_degrees": ("lines", DEGREES | FOREIGN, section("LINES", "\n-45.1  -23.1\n-45.2  -23.2\nEND")),
        "no_header": ("lines", METRES, "LINES" + lines + "\nEND\n"),
        "behind_others": ("lines", METRES, section("POLYGONS", lines) + section("LINES", lines)),
        "last_end_missing": ("lines", METRES, "LINES" + lines + "\n"),
        "no_final_line_feed": ("lines", METRES, "LINES" + POINTS),
        "end_doubled": ("lines", METRES, "LINES" + POINTS + "\nEND\nEND" + POINTS + "\nEND\nEND\n"),
        "end_in_other_forms": ("lines", METRES, "LINES" + POINTS + "\nEnd  \n  end\nENDE\n"),
        "text_behind_number": ("lines", METRES, "LINES\n1 2 lote 7\n3 4\nEND\nEND\n"),
        "separators_mixed": ("lines", METRES, "LINES\n1,2\n3\t4\n1,5,2,5\nEND\nEND\n"),
        "exponents": ("lines", METRES, "LINES\n1.0D+05 2e3\n1e308 1e-320\n-1e400 nan\ninf 0x1p3\nEND\nEND\n"),
        "three_numbers": ("lines", METRES, "LINES\n1 2 3\n4 5 6\nEND\nEND\n"),
        "same_points": ("lines", METRES, "LINES\n1 2\n1 2\nEND\n1 2\n1 2\n1 2\nEND\n7 7\nEND\nEND\n"),
        "unknown_word": ("lines", METRES, "LINES\n// LINES 1 2 END\nAUTO 7\n1 2\nEND\nEND\n"),
        "carriage_returns": ("lines", METRES, "LINES\r\n1 2\r\n3 4\r\nEND\r\nEND\r\n"),
        "carriage_return_later": ("lines", METRES, "LINES\n1 2\r\n3 4\r\nEND\r\nEND\r\n"),
        "zeros": ("lines", METRES, "LINES\n1 2\0 3\n\0\n4 5\nEND\nEND\n"),
        "line_too_long": ("lines", METRES, "LINES\n1 2\x01 \x80\n3 4\nEND\nEND\n"),
        "word_too_long": ("lines", METRES, "LINES\n\x011\xff 2\n3 4\nEND\nEND\n"),
        "line_just_fits": ("lines", METRES, "LINES\n1\x01 \x7f2\n3 4\nEND\nEND\n"),
        "header_cut": ("lines", METRES, "LINES\nINFO\nPROJECTION\tUTM"),
        "network": ("network", METRES, section("NETWORK", "\n 7   1.5   -5   0.25" + POINTS + "\nEND")),
        "network_objects": ("network", METRES, section("NETWORK_OBJECTS", "\n 7 1 2 3" + POINTS + "\nEND")),
        "network_short": ("network", METRES, "NETWORK\n 99999999999 1\n1 2\n3 4\nEND\nEND\n"),
        "break_lines": ("breaks", METRES, section("LINES", lines)),
        "contours": ("contours", METRES, section("CONTOURLINES", contours + points3d)),
        "contours_of_other_datum": ("contours", FOREIGN, section("CONTOURLINES", contours + heights)),
        "contours_in_samples": ("samples", METRES, section("CONTOURLINES", contours + points3d + heights)),
        "points_outside": ("samples", METRES, "CONTOURLINES\nPOINT3D\n-5 -5 1\n1e9 1e9 1\nEND\nEND\n"),
        "no_height": ("contours", METRES, "CONTOURLINES\nLINE3D\n1 2\nEND\nPOINT3D\ns 1 2 3 o 4 5 6\nEND\nEND\n"),
        "empty_blocks": ("contours", METRES, "CONTOURLINES\nLINE3D\nHEIGHT 1\nEND\nPOINT3D\nEND\nEND\n"),
        "height_no_number": ("contours", METRES, "CONTOURLINES\nLINE3D\nHEIGHT alto\n1 2\nEND\nEND\n"),
    }
    cases.update(labelled_sections())
    return {name: bytes([ASCII_JOBS[job], settings, YES]) + text.encode("latin1")
            for name, (job, settings, text) in cases.items()}


# --- Sections of samples, points, labels, tables, texts and turns ---

def labelled_sections():
    place, angle = "500000.000000  ;  7000000.000000", " o 45 00 00.0000 ; s 23 10 05.2000"
    classes = "\nSEPARATOR ;\nTHEMACLASS\n  0   0 255  229  91 104  Mata\n"
    columns = "\nSEPARATOR ;\nUNFORMATED\nCATEGORY_OBJ\tLotes\nT_KEY ; TEXT ; 32 ; 0\nT_NAME ; TEXT ; 32 ; 0\n"
    known = columns + "AREA_M2 ; REAL ; 17 ; 8\nBAIRRO ; TEXT ; 20 ; 0"
    new = columns.replace("Lotes", "Objetos") + "POP;INTEGER\narea;REAL\n1st;DATE\n(x;TEXT;5"
    quoted = '\nCATEGORY_OBJ  "Objetos"\nLABEL  "L1"\nNAME   "Praça da Sé"\n500000.000000     7000000.000000'
    look = "; Rio Tietê; 45.000000 ; 0.100000 ; 2.500000 ; 255 ; 0 ; 0 ; 1 ; 2 ; Helvetica"
    turn = "o 45 0 0.00000 s 23 0 0.00000 o 45 0 1.00000 s 23 0 0.00000 o 45 0 1.00000 s 23 0 1.00000 "
    return {
        "samples_of_points": ("points3d", METRES, "SAMPLE\nINFO" + HEADER + "\nINFO_END\nPOINT3D\n500000 7000000 612.5\nEND\nEND\n"),
        "samples_with_lines": ("points3d", METRES, section("SAMPLE", "\nLINE3D\nHEIGHT 5" + POINTS + "\nEND\nLINES" + POINTS + "\nEND\nEND")),
        "points_of_classes": ("points", METRES, section("POINT2D", "\n" + place + " ; Mata\n" + place + " ; Campo", info=classes)),
        "points_of_objects": ("places", METRES, section("POINT2D", "\n" + place + " ; L1 ; Um ; Objetos", info="\nSEPARATOR ;\n")),
        "points_named": ("points", METRES, section("POINT2D", '\nCLASS_NAME   "Mata"\n500000.000000     7000000.000000')),
        "labels": ("labels", METRES, section("POINTS", "\n" + place + " ; Mata\n" + angle + " ; Mata", info=classes)),
        "labels_of_objects": ("object_labels", METRES, section("POINTS", "\n" + place + " ; L1 ; Um ; Objetos", info="\nSEPARATOR ;\n")),
        "labels_quoted": ("object_labels", METRES, section("POINTS", quoted)),
        "labels_of_nodes": ("node_labels", METRES, section("NETWORK_OBJECTS", quoted + "\nNODES" + quoted)),
        "labels_unended": ("labels", METRES, "POINTS\nCLASS_NAME \"Mata\nCLASS_NAME"),
        "label_long": ("object_labels", METRES, "POINTS\nSEPARATOR ;\n1;2;\x01\xe7\x11;\x01n\x01;Objetos\nEND\n"),
        "table": ("table", METRES, section("TABLE", "\nL1 ; Um ; 1,5 ; Centro\nL2 ;  ; -123456789.25 ; ", info=known)),
        "table_of_other": ("table", METRES, section("TABLE", "\nL1 ; Um ; x", info=known + "\nNOVA;TEXT;5")),
        "table_new": ("new_table", METRES, section("TABLE", "\nL1;Um;12345678901;1e20;12/03/2001;abcdefg\n// c\nL2;Dois;;;;", info=new)),
        "table_empty_fields": ("new_table", METRES, section("TABLE", "\n;;;;;\nL1;;;;;", info=new)),
        "table_row_long": ("table", METRES, section("TABLE", "\nL1;Um;1;\x01x\x11\nL2;Dois;1;\x01x\x80", info=known)),
        "table_unended": ("table", METRES, section("TABLE", "\nL1;Um;1;a", info=known)[:-6]),
        "table_formated": ("table", METRES, section("TABLE", "\nL1 Um 1 a", info=known.replace("UNFORMATED", "FORMATED"))),
        "texts": ("texts", METRES, section("TEXT", "\n" + place + look + "\n" + place + "; Só", info="\nSEPARATOR ;\n")),
        "texts_in_angles": ("texts", FOREIGN, section("TEXT", "\n" + angle + look, info="\nSEPARATOR ;\n")),
        "texts_bad": ("texts", METRES, "TEXT\n0;1;a\n1;0;a\n1;2; \n1;2\nx;y;z\n-;-;-\n1e999;nan;t;nan;1e400;;99999;-9\nEND\n"),
        "turns": ("turns", METRES, "TURNS\nINFO\n// Restrições de direção" + HEADER + "\nINFO_END\n" + turn + "\n" + turn[:-1] + "\nEND_TURNS\n"),
        "turns_bad": ("turns", METRES, "TURNS\nINFO\nINFO_END\n" + turn.replace("s 23 0 0", "x 23 0 0") + "\n" + "1 2 " * 3 + "\n"),
    }


# --- Delimited tables ---

def csv():
    table, update, statistics, nonspatial, columns = range(5)
    ANY, SHORT, FIRST, WORDS = 0x10, 0x20, 0x40, 0x80
    SEMICOLONS, COMMAS, TABS, NO_SEPARATOR, KEY_1, KEY_2, CLEAN = 1, 2, 4, 5, 0x08, 0x10, 0x80
    plain = "nome;valor\nSão Paulo;1\nBelém;2"
    quoted = 'nome;"valor; em reais"\n"São ""Paulo""";"1;5"\n"dois\nfins";2\n'
    section_text = ("\nTABLE\nINFO\nSEPARATOR ;\nUNFORMATED\nCATEGORY_OBJ   Lotes\nT_KEY ; TEXT ; 32 ; 0\nT_NAME ; TEXT ; 32 ; 0\n"
                    "AREA_M2 ; REAL ;\nBAIRRO ; TEXT ; 20 ;\nINFO_END\nL1;Um;1;a\nL2;Dois;2;b\nEND\n\2NOVA\nx;1\ny;2\n")
    cases = {
        "table": (table | ANY, KEY_1, plain),
        "table_numbered": (table, 0, plain + "\n"),
        "table_by_second": (table, KEY_2, "a;b;c\n;k;1\nx;;2\n,y;k;3"),
        "table_of_keys": (table, 0, "T_KEY;pop\nL1;1\nL2;2"),
        "table_quoted": (table | ANY, CLEAN, quoted),
        "update": (update | FIRST, KEY_1, "id;AREA_M2;populacao90;populacao91;DATA\n1;1,5;a;b;c\n2;x;;;\n"),
        "statistics": (statistics, COMMAS, "id,MORAN,LOCAL_I_1\n1,0.5,-1e-3\n2,,7\n"),
        "nonspatial": (nonspatial, 0, "a;ID;ccc\n1;0;\nl'eau;1,5;12345678901234567890;more\nshort\n"),
        "nonspatial_quoted": (nonspatial, CLEAN, quoted),
        "columns": (columns, SEMICOLONS, section_text),
        "columns_of_less": (columns, SEMICOLONS, section_text[:-6]),
        "columns_of_nothing": (columns, SEMICOLONS, section_text[:section_text.index("NOVA")]),
        "byte_order_mark": (table, CLEAN, "\xef\xbb\xbf" + plain),
        "utf16": (table, 0, "\xff\xfea\0;\0b\0\n\0"),
        "carriage_returns": (nonspatial, CLEAN, plain.replace("\n", "\r\n")),
        "zeros": (nonspatial, CLEAN, "a;b\n1\0;2\r\n\0\n"),
        "quote_alone": (nonspatial, 0, 'a;b\n1;5" pipe\n"x;2\n3;4\n'),
        "quote_unended": (table, CLEAN, 'a;b\n1;"x\n2;3\n'),
        "quote_too_late": (table, CLEAN, 'a;b\n1;"x\x01\n\x90"\n'),
        "separator_told": (table, CLEAN, 'sep=,\r\n"a;b",c\n1,2\n'),
        "separator_in_quotes": (table, CLEAN, '"a,b";c\n"1,5";2\n'),
        "comments": (nonspatial, CLEAN, '// a;b\n\na;b\n"//x";1\n//y;2\n1;2\n// end'),
        "names_equal": (nonspatial | SHORT, CLEAN, "quantidade1;QUANTIDADE2;;0;quantid1\n1;2;3;4;5"),
        "names_of_the_system": (nonspatial, 0, "ID;ID1;NOME;GEOID\n1;2;3;4"),
        "names_of_words": (table | WORDS, CLEAN, "a b;c\td;//e\n1;2;3"),
        "tabs": (nonspatial, TABS | CLEAN, 'a\tb\tc\n\t2\t\n1\t\t"x\ty"\n'),
        "no_separator": (nonspatial, NO_SEPARATOR, "a;b\n1,2;3\n"),
        "ragged": (nonspatial, CLEAN, "a;b\n1\n1;2;3\n1;2;;\n;\n"),
        "line_long": (nonspatial, CLEAN, "a;b\n1;\x01x\x70\n1;\x01x\x6f\n"),
        "columns_many": (nonspatial, 0, "a\x01;\x08b\n1"),
    }
    return {name: bytes([what, form, YES]) + text.encode("latin1") for name, (what, form, text) in cases.items()}


def info_block():
    block, table, grid, info_table, box, projection, types, fields, angles, names = range(10)
    columns = ("INFO\nSEPARATOR ;\nUNFORMATED\nCATEGORY_OBJ Objetos\nT_KEY; TEXTO; 32\nT_NAME; TEXTO; 32\n"
               "area;REAL\n2nome;TEXTO;20\nqint32;INTEIRO\ndia;DATA\nSTRING;TEXTO;5\narea;REAL\n"
               "um nome muito comprido;REAL\num nome muito comprido;REAL\nINFO_END\n")
    known = "INFO\nSEPARATOR ;\nCATEGORY_OBJ Lotes\nbairro;TEXTO;20\nnão há;REAL\nINFO_END\n"
    classes = "INFO\nTHEMACLASS\n255 0 0 Mata ciliar\n0 255 0 0 0 255 Água\n1 2\nINFO_END\n"
    corner = "GRIDREG\nINFO\nGRIDDEF 10 20 500000.0 7000000.0 50.0 50.0 -9999\nGRIDCLASS\n1 2 3 Mata\nINFO_END\n"
    angle_corner = "GRIDREG\nINFO\nGRIDDEF 10 20 o 45 0 0.0 s 23 10 5.2 50.0 50.0 -9999\nINFO_END\n"
    degrees = HEADER.replace("BOX\t0.000000, 0.000000, 10000000.000000, 100000000.000000\nUNITS Metros",
                             "BOX\tX1 -45.5, Y1 -23.5, X2 -45.0, Y2 -23.0\nUNITS Geográficas DEG")
    texts = HEADER.replace("BOX\t0.000000, 0.000000, 10000000.000000, 100000000.000000\nUNITS Metros",
                           "BOX\tX1 o 45 30 0, Y1 s 23 30 0, X2 o 45 0 0, Y2 s 23 0 0\nUNITS Geográficas GMS")
    cases = {
        "header": (block, METRES, YES, "INFO\n" + HEADER + "\nINFO_END\n"),
        "columns": (block, METRES, YES, columns),
        "columns_refused": (block, METRES, NO, columns),
        "columns_of_known_table": (table, METRES, YES, known),
        "column_size_negative": (block, METRES, YES, "INFO\nSEPARATOR ;\nCATEGORY_OBJ Objetos\na;TEXTO;-1\nINFO_END\n"),
        "column_size_large": (block, METRES, YES, "INFO\nCATEGORY_OBJ Objetos\na;TEXT;999999999999\nINFO_END\n"),
        "column_without_name": (block, METRES, YES, "INFO\nCATEGORY_OBJ Objetos\n;REAL\n;;;\n;\nINFO_END\n"),
        "column_name_long": (block, METRES, YES, "INFO\nCATEGORY_OBJ Objetos\n\x01a\x20;REAL\nINFO_END\n"),
        "columns_formated": (block, METRES, YES, "INFO\nFORMATED\nCATEGORY_OBJ Objetos\na;REAL\nINFO_END\n"),
        "separator_long": (block, METRES, YES, "INFO\nSEPARATOR ;;\nINFO_END\n"),
        "separator_missing": (block, METRES, YES, "INFO\nSEPARATOR\nINFO_END\n"),
        "classes_of_polygons": (block, METRES, YES, classes),
        "classes_of_points": (table, METRES, YES, classes),
        "classes_refused": (table, METRES, NO, classes),
        "class_name_long": (table, METRES, YES, "INFO\nTHEMACLASS\n1 2 3 \x01x\x01\nINFO_END\n"),
        "grid": (grid, METRES, YES, corner),
        "grid_of_other_datum": (grid, FOREIGN | DEGREES, YES, corner),
        "grid_at_angles": (grid, METRES, YES, angle_corner),
        "grid_sizes": (grid, METRES, YES, "GRIDREG\nINFO\nGRIDDEF -1 99999 x\nGRIDDEF 1 1 1 1 1 1 nan\nINFO_END\n"),
        "no_info_end": (block, METRES, YES, "INFO\nSCALE\t1\n"),
        "object_table": (info_table, METRES, YES, "TABLE\nINFO\nCATEGORY_OBJ Bairros\n"),
        "object_table_known": (info_table, METRES, YES, "TABLE\nINFO\nCATEGORY_OBJ Lotes\n"),
        "object_table_nameless": (info_table, METRES, YES, "TABLE\nINFO\nCATEGORY_OBJ\nINFO_END\n"),
        "box_plane": (box, METRES, YES, HEADER),
        "box_degrees": (box, METRES, YES, degrees),
        "box_texts": (box, METRES, YES, texts),
        "box_of_two_headers": (box, METRES, YES, degrees + HEADER),
        "projection": (projection, METRES, YES, HEADER),
        "projection_unknown": (projection, METRES, YES, HEADER.replace("UTM", "QUALQUER")),
        "projection_numbers": (projection, METRES, YES, HEADER.replace("Prd 6378160.000000", "Prd -1e308")),
        "projection_half": (projection, METRES, YES, "PROJECTION DATUM HEMIS Prd"),
        "types": (types, SEMICOLON, YES, "a;b;c;d;e;f\n123;1234;1.5;12/03/2001;0;abc\n"),
        "types_many": (types, SEMICOLON, YES, "a;b\n\x01;\x02\n"),
        "types_one_line": (types, SEMICOLON, YES, "a,b"),
        "fields": (fields, SEMICOLON, YES, "a;b\na;;b\n1,5;2\n1;2;3;4;5;6;7;8\n;\n;;;;\n"),
        "field_long": (fields, SEMICOLON, YES, "a;b\n\x01x\x20;b\na;\x01 \x11\n"),
        "angles": (angles, FOREIGN, YES, "s 23 10 5.20 o 45 30 10.50 z 612.5\nO 45 30 10 N 1 2 3\nx 1 2 3\nEND\n"),
        "angles_odd": (angles, METRES, YES, "s 99 99 99 o 999 99 99\nn\te\nn 1 2 3 n 1 2 3\ns 1 2 3 o 4 5 6 z\n"),
        "names": (names, METRES, YES, 'LABEL "Praça da Sé"\nNAME \'x\'\nCLASS_NAME \x01n\x01\nLABEL\n'),
    }
    return {name: bytes([what, settings, answers]) + text.encode("latin1")
            for name, (what, settings, answers, text) in cases.items()}


# --- Shapefiles ------------------------------------------------------------------------------------------------------

LINES, CADASTRAL, SAMPLES, NETWORK, CONTOURS = range(5)
POINT, ARC, POLYGON, MULTIPOINT, POINT_Z, ARC_Z, POLYGON_Z, ARC_M = 1, 3, 5, 8, 11, 13, 15, 23
OUTER = [(500000, 7000000), (500000, 7000100), (500100, 7000100), (500100, 7000000), (500000, 7000000)]
HOLE = [(500020, 7000020), (500040, 7000020), (500040, 7000040), (500020, 7000040), (500020, 7000020)]
OTHER = [(500200, 7000000), (500200, 7000100), (500300, 7000100), (500200, 7000000)]
WKT = ('PROJCS["UTM_23S",GEOGCS["GCS_SAD69",DATUM["D_South_American_1969",SPHEROID["GRS_1967_Truncated",6378160.0,'
       '298.25]],PRIMEM["Greenwich",0.0],UNIT["Degree",0.0174532925199433]],PROJECTION["Transverse_Mercator"],'
       'PARAMETER["False_Easting",500000.0],PARAMETER["False_Northing",10000000.0],'
       'PARAMETER["Central_Meridian",-45.0],PARAMETER["Scale_Factor",0.9996],PARAMETER["Latitude_Of_Origin",0.0],'
       'UNIT["Meter",1.0]]')


def box_of(points):
    xs, ys = [p[0] for p in points], [p[1] for p in points]
    return struct.pack("<4d", min(xs), min(ys), max(xs), max(ys)) if points else struct.pack("<4d", 0, 0, 0, 0)


def shape_of_points(points, kind):
    data = b"".join(struct.pack("<2d", *p[:2]) for p in points)
    if kind == POINT_Z:
        data += struct.pack("<2d", points[0][2], 0)
    return struct.pack("<i", kind) + data


def shape_of_parts(parts, kind, heights=None, measures=None):
    points = [p for part in parts for p in part]
    starts, at = [], 0
    for part in parts:
        starts.append(at)
        at += len(part)
    data = struct.pack("<i", kind) + box_of(points) + struct.pack("<2i", len(parts), len(points))
    data += struct.pack(f"<{len(starts)}i", *starts) + b"".join(struct.pack("<2d", *p) for p in points)
    for extra in (heights, measures):
        if extra is not None:
            data += struct.pack("<2d", min(extra), max(extra)) + struct.pack(f"<{len(extra)}d", *extra)
    return data


NULL = struct.pack("<i", 0)


def head(kind, length):
    return struct.pack(">7i", 9994, 0, 0, 0, 0, 0, length // 2) + struct.pack("<2i8d", 1000, kind, *[0.0] * 8)


def main_file(kind, shapes):
    data = b"".join(struct.pack(">2i", n, len(s) // 2) + s for n, s in enumerate(shapes, 1))
    return head(kind, 100 + len(data)) + data


def index_file(kind, shapes):
    data, at = b"", 50
    for shape in shapes:
        data += struct.pack(">2i", at, len(shape) // 2)
        at += 4 + len(shape) // 2
    return head(kind, 100 + len(data)) + data


def dbf_file(columns, rows, language=0, version=3, count=None, record=None, header=None, end=b"\x1a"):
    """Columns are (name, type, width, decimals); rows are lists of bytes of any length."""
    length = 1 + sum(width for _, _, width, _ in columns)
    data = struct.pack("<4BIHH16xBBxx", version, 101, 1, 1, len(rows) if count is None else count,
                       32 + 32 * len(columns) + 1 if header is None else header,
                       length if record is None else record, 0, language)
    for name, kind, width, decimals in columns:
        data += name.encode("latin1")[:11].ljust(11, b"\0") + kind.encode() + bytes(4) + bytes([width, decimals]) + bytes(14)
    data += b"\r"
    for row in rows:
        data += b" " + b"".join(value[:width].ljust(width) for value, (_, _, width, _) in zip(row, columns))
    return data + end


COLUMNS = [("NOME", "C", 12, 0), ("AREA", "N", 9, 2), ("POP", "N", 6, 0), ("DIA", "D", 8, 0), ("SIM", "L", 1, 0)]
ROWS = [["São Paulo".encode(), b"12.50", b"100", b"20240131", b"T"], [b"Bel\xe9m", b"*********", b"1.5", b"00000000", b"?"],
        [b"", b"-1e9", b"", b"", b""]]


def container(job, settings, answers, shp=b"", shx=b"", dbf=b"", cpg=b""):
    parts = [shp, shx, dbf, cpg]
    return bytes([job, settings, answers]) + struct.pack("<4H", *map(len, parts)) + b"".join(parts)


def whole(job, kind, shapes, settings=METRES, answers=YES, **files):
    made = {"shp": main_file(kind, shapes), "shx": index_file(kind, shapes), "dbf": dbf_file(COLUMNS, ROWS)}
    made.update(files)
    return container(job, settings, answers, **made)


def patched(data, at, form, *values):
    return data[:at] + struct.pack(form, *values) + data[at + struct.calcsize(form):]


def shapefile():
    points = [shape_of_points([(500000 + i, 7000000)], POINT) for i in range(3)]
    samples = [shape_of_points([(500000 + i, 7000000, 100.5)], POINT_Z) for i in range(3)]
    arcs = [shape_of_parts([OUTER[:3], OTHER[:2]], ARC), NULL, shape_of_parts([HOLE], ARC)]
    polygons = [shape_of_parts([OUTER, HOLE], POLYGON), shape_of_parts([list(reversed(HOLE))], POLYGON),
                shape_of_parts([OTHER], POLYGON)]
    contour = [shape_of_parts([OUTER[:3]], ARC_Z, [100.0] * 3, [0.0] * 3), shape_of_parts([OTHER], POLYGON_Z, [50.0] * 4)]
    measured = [shape_of_parts([OUTER[:3]], ARC_M, measures=[1.0, 2.0, -1e39])]
    arc_file, polygon_file = main_file(ARC, arcs), main_file(POLYGON, polygons)
    names = [("NID", "C", 3, 0), ("1\xe9-x", "C", 3, 0), ("_A", "C", 3, 0), ("_A", "C", 3, 0), ("", "C", 3, 0), ("ABCDEFGHIJK", "C", 3, 0),
             ("abcdefghij", "C", 3, 0)]
    return {
        "points": whole(CADASTRAL, POINT, points),
        "arcs": whole(LINES, ARC, arcs),
        "arcs_of_other_datum": whole(LINES, ARC, [shape_of_parts([[(-45.1, -23.1), (-45.2, -23.2)]], ARC)], settings=DEGREES | FOREIGN),
        "arcs_in_network": whole(NETWORK, ARC, arcs, cpg=b"UTF-8"),
        "polygons_cleaned": whole(CADASTRAL, POLYGON, polygons),
        # The second question, whether to clean inner polygons, gets a no.
        "polygons_nested": whole(CADASTRAL, POLYGON, polygons, answers=0b11111101),
        "polygons_thematic": whole(LINES, POLYGON, polygons, answers=NO),
        "holes_alone": whole(LINES, POLYGON, [shape_of_parts([HOLE, list(reversed(OTHER))], POLYGON)], answers=NO),
        "hole_far_away": whole(LINES, POLYGON, [shape_of_parts([OUTER, OTHER, [(x + 9e5, y) for x, y in HOLE]], POLYGON)], answers=NO),
        "rings_open": whole(LINES, POLYGON, [shape_of_parts([OUTER[:4], HOLE[:3], OTHER[:1]], POLYGON)]),
        "ring_flat": whole(LINES, POLYGON, [shape_of_parts([OUTER, [(500000, 7000000)] * 4], POLYGON)]),
        "arc_of_one_point": whole(LINES, ARC, [shape_of_parts([OUTER[:1], []], ARC)]),
        "not_numbers": whole(LINES, POLYGON, [shape_of_parts([[(float("nan"), 1e308), (float("inf"), 0)] * 2], POLYGON)]),
        "samples": whole(SAMPLES, POINT_Z, samples),
        "samples_outside": whole(SAMPLES, POINT_Z, [shape_of_points([(-9e9, 0, 1)], POINT_Z), shape_of_points([(0, 0, 0)], POINT_Z)]),
        "contours": whole(CONTOURS, ARC_Z, contour),
        "contours_by_measure": whole(CONTOURS, ARC_M, measured),
        "contours_flat": whole(CONTOURS, ARC, arcs),
        "main_file_alone": container(LINES, 0, YES, shp=arc_file),
        "multipoints": whole(LINES, MULTIPOINT, [NULL]),
        "kinds_mixed": whole(LINES, ARC, [shape_of_points([(1, 2)], POINT), arcs[0]]),
        "index_short": whole(LINES, ARC, arcs, shx=index_file(ARC, arcs)[:110]),
        "index_astray": whole(LINES, ARC, arcs, shx=patched(index_file(ARC, arcs), 100, ">2i", 0x3FFFFFFF, 0x3FFFFFFF)),
        "index_back": whole(LINES, ARC, arcs, shx=patched(index_file(ARC, arcs), 108, ">2i", -50, -1)),
        "index_counts_more": whole(LINES, ARC, arcs, shx=patched(index_file(ARC, arcs), 24, ">i", 0x7FFFFFFF)),
        "file_cut": whole(LINES, ARC, arcs, shp=arc_file[:-20]),
        "file_head_only": whole(LINES, ARC, arcs, shp=arc_file[:100]),
        "parts_count_huge": whole(LINES, ARC, arcs, shp=patched(arc_file, 144, "<2i", 0x7FFFFFFF, 5)),
        "points_count_huge": whole(LINES, ARC, arcs, shp=patched(arc_file, 144, "<2i", 2, 0x7FFFFFFF)),
        "counts_negative": whole(LINES, ARC, arcs, shp=patched(arc_file, 144, "<2i", -1, -2)),
        "part_starts_astray": whole(CADASTRAL, POLYGON, polygons, shp=patched(polygon_file, 152, "<2i", 7, -3)),
        "content_longer": whole(LINES, ARC, arcs, shp=patched(arc_file, 104, ">i", 0x7FFFFFFF)),
        "boxes_wrong": whole(LINES, ARC, arcs, shp=patched(arc_file, 36, "<4d", 1e300, 1, -1, float("nan"))),
        "fewer_rows": whole(CADASTRAL, ARC, arcs, dbf=dbf_file(COLUMNS, ROWS[:1])),
        "table_no_table": whole(CADASTRAL, ARC, arcs, dbf=b"kein dbf"),
        "table_refused": whole(CADASTRAL, ARC, arcs, dbf=b"", answers=NO),
        "table_names": whole(CADASTRAL, POINT, points, dbf=dbf_file(names, [[b"a"] * 7] * 3)),
        "encoding_lies": whole(CADASTRAL, POINT, points, cpg=b"UTF-8\r\n", dbf=dbf_file(COLUMNS, ROWS, language=0x57)),
        "encoding_codes": whole(CADASTRAL, POINT, points, cpg=b"ANSI 1251", dbf=dbf_file(COLUMNS, ROWS, language=0x64)),
    }


def dbf():
    wide = [("TEXTO", "C", 254, 0)]
    many = [(f"C{i}", "C", 1, 0) for i in range(6)]
    good = dbf_file(COLUMNS, ROWS)
    cases = {
        "whole": good,
        "no_end_mark": dbf_file(COLUMNS, ROWS, end=b""),
        "count_zero": dbf_file(COLUMNS, ROWS, count=0),
        "count_huge": dbf_file(COLUMNS, ROWS, count=0xFFFFFFFF),
        "record_length_wrong": dbf_file(COLUMNS, ROWS, record=20),
        "record_length_zero": dbf_file(COLUMNS, ROWS, record=0),
        "record_length_more": dbf_file(COLUMNS, ROWS, record=65535),
        "head_length_wrong": dbf_file(COLUMNS, ROWS, header=33),
        "head_length_zero": dbf_file(COLUMNS, ROWS, header=0),
        "head_length_more": dbf_file(COLUMNS, ROWS, header=65535),
        "no_columns": dbf_file([], []),
        "width_zero": dbf_file([("A", "N", 0, 0), ("B", "C", 0, 0)], [[b"", b""]]),
        "decimals_more_than_width": dbf_file([("A", "N", 4, 15), ("B", "F", 20, 255)], [[b"1.25", b"1,5e300"]]),
        "names_unended": dbf_file([("ABCDEFGHIJK", "C", 3, 0), ("\xff\xfe\0rest", "C", 3, 0)], [[b"abc", b"def"]]),
        "binary_kinds": dbf_file([("I", "I", 4, 0), ("B", "B", 8, 0), ("T", "T", 8, 0), ("Y", "Y", 8, 0), ("M", "M", 10, 0), ("@", "@", 8, 0)],
                                 [[b"\xff" * 4, b"\x7f" * 8, b"\x01" * 8, b"\x80" * 8, b"0000000001", b"\xff" * 8]], version=0x30),
        "wide_text": dbf_file(wide, [["ç".encode() * 127], [b"\xe7" * 254]]),
        "deleted_rows": good.replace(b" S\xc3\xa3o", b"*S\xc3\xa3o"),
        "cut_in_row": good[:-30],
        "cut_in_head": good[:70],
        "many_columns": dbf_file(many, [[b"\0"] * 6, [b"\x1a"] * 6]),
        "numbers": dbf_file([("N", "N", 20, 0)], [[b"12345678901234567890"], [b"  -2147483648"], [b"1,5"], [b"."], [b"-"], [b"0x10"]]),
        "dates": dbf_file([("D", "D", 8, 0)], [[b"20240230"], [b"        "], [b"99999999"], [b"2024"]]),
        "level_7": dbf_file(COLUMNS, ROWS, version=0x8C),
        "language_dos": dbf_file(COLUMNS, ROWS, language=0x02),
    }
    seeds = {name: bytes([0, 1]) + data for name, data in cases.items()}
    for number, name in enumerate(["", "utf8", "cp1252", "cp850", "utf16", "unknown"]):
        if name:
            seeds["read_as_" + name] = bytes([number, 0]) + good
    return seeds


# --- Texts before they are read ---

def intake():
    section_text = section("LINES", POINTS + "\nEND")
    table = "nome;valor\nSão Paulo;1\nBelém;2\n"
    texts = {
        "as_it_should_be": (0, section_text.encode("latin1")),
        "dos": (0, section_text.replace("\n", "\r\n").encode("latin1")),
        "mac": (0, section_text.replace("\n", "\r").encode("latin1")),
        "mixed": (0, b"LINES\r\r\n1 2\n\r3 4\rEND\r\nEND\n"),
        "utf8": (0, section_text.encode()),
        "byte_order_mark": (0, section_text.encode("utf-8-sig")),
        "utf16": (0, section_text.encode("utf-16")),
        "utf16_big_endian": (0, b"\xfe\xff" + section_text.encode("utf-16-be")),
        "utf16_without_mark": (0, section_text.encode("utf-16-le")),
        "utf16_odd": (0, b"\xff\xfe" + section_text.encode("utf-16-le")[:-1]),
        "says_utf16": (3 << 1, section_text.encode()),
        "beyond_latin1": (0, "LINES\n// Łódź ẽ 東京 \U0001F5FA e\u0301\n1 2\n".encode()),
        "surrogate_alone": (0, b"\xff\xfeL\0\x00\xd8A\0\n\0"),
        "bytes_invalid": (0, b"LINES\n\xc3\x28\xf8\x88\x80\n"),
        "control_z": (0, section_text.encode("latin1") + b"\x1a\x1a"),
        "control_z_inside": (0, b"LINES\n\x1a1 2\nEND\n"),
        "zeros": (0, b"LINES\0\0\n\0"),
        "table": (1, table.encode("latin1")),
        "table_of_feeds": (1, b"\n\r\n\r\r"),
        "code_page": (5 << 1, table.encode("cp850")),
        "encoding_unknown": (7 << 1, table.encode("latin1")),
        "only_mark": (0, b"\xef\xbb\xbf"),
        "long_line": (0, b"LINES\n\x01x\xff\n"),
        "sections": (0, (section_text + section("CONTOURLINES", "\nLINE3D\nHEIGHT 1" + ANGLES + "\nEND")).encode("latin1")),
        "box_in_degrees": (0, HEADER.replace("BOX\t0.000000, 0.000000, 10000000.000000, 100000000.000000\nUNITS Metros",
                           "BOX\tX1 -45.5, Y1 -23.5, X2 -45.0, Y2 -23.0\nUNITS Geográficas DEG").join(
                               ["LINES\nINFO", "\nINFO_END" + ANGLES + "\nEND\nEND\n"]).encode("latin1")),
    }
    return {name: bytes([choice]) + data for name, (choice, data) in texts.items()}


# --- The small ones --------------------------------------------------------------------------------------------------

def geometry_blob():
    def blob(body, flags=1, envelope=b"", srs=4326, order="<"):
        return b"GP\0" + bytes([flags]) + struct.pack(order + "i", srs) + envelope + body

    coordinates = struct.pack("<6d", 1, 2, 3, 4, 5, 6)
    line = struct.pack("<BII", 1, 2, 3) + coordinates
    polygon = struct.pack("<BII", 1, 3, 2) + struct.pack("<I", 0) + struct.pack("<I", 3) + coordinates
    return {
        "line": blob(line, 3, struct.pack("<4d", 1, 5, 2, 6)),
        "line_without_envelope": blob(line),
        "line_z": blob(struct.pack("<BII", 1, 1002, 2) + coordinates),
        "line_zm_extended": blob(struct.pack("<BII", 1, 0xC0000002, 1) + coordinates),
        "line_of_too_many": blob(struct.pack("<BII", 1, 2, 0x10000001) + coordinates),
        "line_big_endian": blob(struct.pack(">BII6d", 0, 2, 3, 1, 2, 3, 4, 5, 6), 0, order=">"),
        "polygon": blob(polygon),
        "polygon_of_too_many": blob(struct.pack("<BII", 1, 3, 0xFFFFFFFF) + struct.pack("<I", 0) * 4),
        "point": blob(struct.pack("<BI2d", 1, 1, 1, 2)),
        "point_z": blob(struct.pack("<BI3d", 1, 1001, 1, 2, 3)),
        "point_empty": blob(struct.pack("<BI2d", 1, 1, float("nan"), float("nan")), 0x11),
        "envelope_xyzm": blob(line, 9, struct.pack("<8d", *range(8))),
        "envelope_unknown": blob(line, 0x0F),
        "collection": blob(struct.pack("<BII", 1, 7, 1) + line),
        "cut": blob(line)[:-1],
    }


def projection_text():
    sirgas = ('GEOGCS["SIRGAS 2000",DATUM["Sistema de Referencia Geocentrico para las AmericaS 2000",'
              'SPHEROID["GRS 1980",6378137,298.257222101]],PRIMEM["Greenwich",0],UNIT["degree",0.0174532925199433]]')
    wkt2 = ('PROJCRS["x",BASEGEOGCRS["WGS 84",DATUM["World Geodetic System 1984",ELLIPSOID["WGS 84",6378137,298.257223563]]],'
            'CONVERSION["y",METHOD["Lambert Conic Conformal (2SP)"],PARAMETER["Latitude of 1st standard parallel",-2],'
            'PARAMETER["Latitude of 2nd standard parallel",-22]],CS[Cartesian,2],AXIS["e",east],AXIS["n",north],'
            'LENGTHUNIT["metre",1]]')
    cases = {
        "epsg": "EPSG:31983", "epsg_geographic": "EPSG:4326", "epsg_none": "EPSG:999999999999", "esri": WKT,
        "geographic": sirgas, "wkt2": wkt2, "utm": "+proj=utm +zone=23 +south +ellps=aust_SA +towgs84=-57,1,-41 +units=m +no_defs",
        "longlat": "+proj=longlat +datum=WGS84 +no_defs", "degenerate": "+proj=tmerc +lat_0=1e308 +k=0 +a=0 +type=crs",
        "cone": "+proj=lcc +lat_1=-10 +lat_2=10 +lon_0=-54 +ellps=GRS80 +type=crs", "compound": f'COMPD_CS["a",{sirgas},VERT_CS["b",VERT_DATUM["c",2005],UNIT["m",1]]]',
        "feet": WKT.replace('UNIT["Meter",1.0]', 'UNIT["Foot_US",0.3048006096012192]'), "meridian": sirgas.replace('"Greenwich",0', '"Paris",2.33722917'),
        "deep": "\x01[\x20", "unended": WKT[:200], "quotes": 'GEOGCS["a""b",DATUM["c\nd"]]', "empty": "  ",
    }
    return {name: text.encode() for name, text in cases.items()}


def legacy_polygons():
    def line(number, points, offset):
        (x, y), (last_x, last_y) = points[0], points[-1]
        record = struct.pack("<HH22x4f", number, len(points), x, y, last_x, last_y)
        return record.ljust(96, b"\0") + struct.pack("<I", offset)

    def polygon(number, lines, box, offset, children=(), children_offset=0, geo_class=1, flag=b"0"):
        record = struct.pack("<38xf4xH4fhHIc", children_offset, len(lines), *box, geo_class, number, offset, flag)
        own = children if len(children) <= 20 else ()
        return (record.ljust(74, b"\0") + struct.pack(f"<h{len(own)}h", len(children), *own)).ljust(116, b"\0")

    def files(lines, polygons, direct=0, mode=b"0", limit=100, count=None, cut=None):
        li1, li2 = struct.pack("<hhc", direct, limit, mode).ljust(50, b"\0"), b""
        for number, points in lines:
            li1 += line(number, points, len(li2))
            for axis in (0, 1):
                li2 += struct.pack(f"<{len(points)}f", *(point[axis] for point in points))
        po1, po2 = struct.pack("<h4xh", len(polygons) if count is None else count, limit).ljust(32, b"\0"), b""
        for number, ids, box, *more in polygons:
            children = more[0] if more else ()
            places = struct.pack(f"<{len(ids)}h", *ids)
            po1 += polygon(number, ids, box, len(po2), children, len(po2) + len(places), *more[1:])
            po2 += places + (struct.pack(f"<{len(children)}h", *children) if len(children) > 20 else b"")
        return (struct.pack("<3H", len(li1), len(li2), len(po1)) + li1 + li2 + po1 + po2)[:cut]

    def square(low, high):
        return [(low, low), (high, low), (high, high), (low, high), (low, low)]

    whole, hole = (0, 100, 0, 100), (30, 70, 30, 70)
    rings = [(1, square(0, 100)), (2, square(30, 70))]
    thirds = [(1, [(0, 0), (50, 0), (100, 0)]), (2, [(100, 100), (100, 0)]), (3, [(100, 100), (0, 100), (0, 0)])]
    nan, inf = float("nan"), float("inf")
    return {
        "hole": files(rings, [(1, [1], whole, [2]), (2, [2], hole)]),
        "ring_of_lines": files(thirds, [(1, [1, 2, 3], whole), (2, [3, 2, 1], whole)]),
        "many_children": files(rings, [(1, [1], whole, [2] * 21), (2, [2], hole)]),
        "direct": files([(1, square(0, 100)), (3, square(30, 70))], [(1, [1], whole), (2, [3], hole)], 1, b"1"),
        "last": files(rings, [(1, [1], whole), (2, [2], hole, [], 0, b"1")]),
        "empty_polygon": files(rings, [(1, [], whole), (2, [2], hole)]),
        "line_again_and_again": files([(1, square(0, 100) * 200)], [(1, [1] * 3000, whole)]),
        "own_child": files(rings, [(1, [1], whole, [1, -1, 0, 32767])]),
        "no_numbers": files([(1, [(nan, 0), (inf, 50), (-inf, 100), (nan, 50), (nan, 0)] * 9)], [(1, [1], whole)]),
        "boxes_of_no_numbers": files(rings, [(1, [1], (nan, inf, -inf, nan)), (2, [2], hole)]),
        "count_more": files(rings, [(1, [1], whole)], count=32767, limit=32767),
        "count_less_than_none": files(rings, [(1, [1], whole)], count=-1, limit=-1),
        "cut": files(rings, [(1, [1], whole, [2] * 21), (2, [2], hole)], cut=-9),
        "heads_only": files([], []),
    }


DXF_JOBS = {"lines": 0, "breaks": 1, "samples": 2, "contours": 3, "classes": 4, "objects": 5, "texts": 6, "layers": 7}


def dxf():
    def pairs(text):
        return "".join("\n".join(pair.partition(" ")[::2]) + "\n" for pair in text.split("|"))

    def drawing(entities, before=""):
        return before + pairs("0 SECTION|2 ENTITIES") + pairs(entities) + pairs("0 ENDSEC|0 EOF")

    tables = pairs("0 SECTION|2 HEADER|9 $ACADVER|1 AC1009|9 $DWGCODEPAGE|3 ANSI_1251|0 ENDSEC|0 SECTION|2 TABLES|0 TABLE"
                   "|2 LAYER|70 2|0 LAYER|2 0|62 7|0 LAYER|2 A|62 -3|0 ENDTAB|0 ENDSEC")
    block = pairs("0 SECTION|2 BLOCKS|0 BLOCK|2 ENTITIES|0 LINE|8 A|10 1|20 1|11 2|21 2|0 ENDBLK|0 ENDSEC")
    place = "10 500000|20 7000000"
    line = f"0 LINE|8 A|{place}|30 5|11 500100|21 7000100|31 5"
    vertices = f"0 VERTEX|8 A|{place}|30 5|0 VERTEX|8 A|10 500100|20 7000000|0 VERTEX|8 A|10 500100|20 7000100|70 16"
    corners = "".join(f"|0 VERTEX|8 A|10 {x}|20 {y}|70 192" for x, y in ((1, 1), (2, 1), (2, 2), (1, 2)))
    mesh = f"0 POLYLINE|8 A|70 64{corners}|0 VERTEX|8 A|10 0|20 0|70 128|71 -1|72 2|73 -3|74 4|0 SEQEND|8 A"
    text = f"0 TEXT|8 A|{place}|40 2.5|1 Q%%d\\U+00E7|41 1|50 30"
    cases = {
        "line": ("lines", drawing(line, tables + block)), "line_breaks": ("breaks", drawing(line)),
        "line_samples": ("samples", drawing(line)), "no_section": ("lines", pairs(f"{line}|0 EOF")),
        "points": ("lines", drawing(f"0 POINT|8 A|{place}|0 INSERT|8 A|2 B|{place}|0 POINT|8 A|10 0|20 0")),
        "points_heights": ("samples", drawing(f"0 POINT|8 A|{place}|30 5|0 POINT|8 A|38 7|{place}")),
        "points_contours": ("contours", drawing(f"0 POINT|8 A|{place}|30 5")),
        "polyline": ("lines", drawing(f"0 POLYLINE|8 A|66 1|70 1|{vertices}|0 SEQEND|8 A")),
        "polyline_spline": ("lines", drawing(f"0 POLYLINE|8 A|70 9|{vertices}|70 32|0 SEQEND")),
        "polyline_heights": ("samples", drawing(f"0 POLYLINE|8 A|30 7|{vertices}|0 SEQEND")),
        "polyline_open_ended": ("lines", drawing(f"0 POLYLINE|8 A|{vertices}|{line}")),
        "polyline_contours": ("contours", drawing(f"0 POLYLINE|8 A|{vertices}|0 SEQEND")),
        "vertex_alone": ("lines", drawing(vertices)), "mesh": ("lines", drawing(mesh)),
        "mesh_samples": ("samples", drawing(mesh)),
        "mesh_astray": ("lines", drawing(mesh.replace("72 2", "72 2147483647").replace("71 -1", "71 -2147483648"))),
        "arc": ("lines", drawing(f"0 ARC|8 A|{place}|40 10|50 350|51 10")),
        "arc_endless": ("lines", drawing(f"0 ARC|8 A|{place}|40 10|50 0|51 1e18")),
        "arc_no_number": ("lines", drawing(f"0 ARC|8 A|{place}|40 nan|50 nan|51 inf")),
        "circle": ("lines", drawing(f"0 CIRCLE|8 A|{place}|40 10")),
        "not_numbers": ("lines", drawing("0 LINE|8 A|10 nan|20 inf|11 1e999|21 x|0 POINT|8 A|10 1e308|20 1e308")),
        "text": ("texts", drawing(text, tables)), "text_empty": ("texts", drawing(f"{text}|0 TEXT|8 A|10 1|20 1|1 ")),
        "text_codes": ("texts", drawing(text.replace("Q", "%%u%%065%%%\\M+182A0\\U+D800\\U+"))),
        "text_long": ("texts", drawing(text.replace("Q", "\x01x\x08"))), "labels": ("classes", drawing(text)),
        "labels_objects": ("objects", drawing(f"{text}|0 ATTRIB|8 A|{place}|1 Q1")),
        "layers": ("layers", drawing(line, tables)), "layers_cut": ("layers", tables[:-40]),
        "layers_no_table": ("layers", pairs("0 SECTION|2 TABLES|0 ENDSEC") + drawing(f"{line}|0 LINE|8 B|0 LINE|8 0")),
        "newer": ("lines", drawing(f"0 LWPOLYLINE|8 A|90 2|{place}|0 SPLINE|8 \\U+4E2D|0 HATCH|{place}|{line}")),
        "comments": ("lines", "999\n\n999\nLINE\n" + drawing(line.replace("|", "|999 x|"))),
        "blank_lines": ("lines", drawing(line).replace("\n", "\n\n")),
        "blank_values": ("lines", pairs("0 SECTION|2 HEADER|9 $X|1 |0 ENDSEC") + drawing(line) + pairs("0 X|3 |300 ")),
        "cut": ("lines", drawing(line)[:-12]), "code_only": ("lines", "0"), "no_codes": ("lines", "a\nb\nc\nd\n" * 9),
    }
    seeds = {}
    for name, (job, content) in cases.items():
        settings = FOREIGN if name in ("polyline", "text") else KILOMETRES if name == "circle" else METRES
        seeds[name] = bytes([DXF_JOBS[job], settings, YES if "labels" in name else NO]) + content.encode("latin-1")
    return seeds


def ungenerate():
    lines, breaks, samples, contours, labels = range(5)
    pairs = "1\n500000.5 7000000\n500100 7000050.25\nEND\n2 rio\n1 2\n3 4\nEND\nEND\n"
    triples = "1\n500000.5 7000000 100\n500100 7000050.25 100\nEND\nEND\n"
    points = "1  500000 7000000 612.5\n2  500001 7000001 -1e3\nEND\n"
    cases = {
        "lines": (lines, METRES, pairs), "lines_in_km": (lines, KILOMETRES, pairs), "breaks": (breaks, METRES, pairs),
        "lines_of_other_datum": (lines, FOREIGN, pairs), "lines_in_degrees": (lines, DEGREES | FOREIGN, "1\n-45.1 -23.1\n-45.2 -23.2\nEND\nEND\n"),
        "lines_with_heights": (samples, METRES, triples), "contours": (contours, METRES, triples), "points": (samples, METRES, points),
        "points_in_contours": (contours, METRES, points), "labels": (labels, METRES, "1  500000 7000000   \n7  1 2\nEND\n"),
        "heights_missing": (samples, METRES, pairs), "heights_in_lines": (lines, METRES, triples), "angles": (samples, METRES, "s 23 10 5\nEND\n"),
        "no_end": (lines, METRES, pairs[:-4]), "cut": (lines, METRES, pairs[:20]), "identifier_real": (lines, METRES, "1.5\n1 2\n3 4\nEND\nEND\n"),
        "only_end": (lines, METRES, "END"), "only_end_of_samples": (samples, METRES, "END"), "empty_record": (lines, METRES, "1\nEND\nEND\n"),
        "not_numbers": (lines, METRES, "1\nnan inf\n1e400 -1e-400\n0x1p3 2\nEND\nEND\n"), "line_too_long": (lines, METRES, "1\n1 2\x01 \x90\n3 4\nEND\nEND\n"),
        "word_too_long": (lines, METRES, "\x017\xff\n1 2\n3 4\nEND\nEND\n"), "zeros": (lines, METRES, "1\n1 2\x00\n3 4\nEND\x00\nEND\n"),
        "comments": (lines, METRES, "1\n// 1\n1 2\n\n3 4\nEND\nEND\n"), "same_points": (lines, METRES, "1\n1 2\n1 2\nEND\n2\n1 2\nEND\nEND\n"),
    }
    return {name: bytes([job, settings]) + text.encode("latin1") for name, (job, settings, text) in cases.items()}


def kml():
    everything, lines = 0, 1
    point = "<Placemark><name>a</name><Point><coordinates>-45,-23,5</coordinates></Point></Placemark>"
    line = "<Placemark><LineString><coordinates>-45,-23 -45.1,-23.1\n-45.2,-23.2</coordinates></LineString></Placemark>"
    ring = "<LinearRing><coordinates>-45,-23 -44,-23 -44,-22 -45,-23</coordinates></LinearRing>"
    polygon = f"<Placemark><Polygon><outerBoundaryIs>{ring}</outerBoundaryIs><innerBoundaryIs>{ring}{ring}</innerBoundaryIs></Polygon></Placemark>"
    data = "<Placemark><ExtendedData><Data name='a'><value>1</value></Data><SchemaData><SimpleData name='b'>2</SimpleData></SchemaData><c>3</c></ExtendedData></Placemark>"
    bomb = "<!DOCTYPE kml [<!ENTITY a 'aaaaaaaaaa'>" + "".join(
        f"<!ENTITY {chr(98 + n)} '{('&' + chr(97 + n) + ';') * 10}'>" for n in range(9)) + "]>"
    texts = {
        "point": point, "line": line, "polygon": polygon, "data": data, "tuples_loose": line.replace(",", ", ").replace(" -45.1", ", -45.1"),
        "several": f"<Document><Folder>{point}<Folder>{line}</Folder></Folder>{polygon}</Document>",
        "multi": f"<Placemark><MultiGeometry><MultiGeometry><Point><coordinates>1,2</coordinates></Point></MultiGeometry><Polygon><outerBoundaryIs>{ring}</outerBoundaryIs></Polygon><gx:Track/></MultiGeometry><Point><coordinates>3,4</coordinates></Point></Placemark>",
        "folders_deep": "<Folder>" * 1500 + point + "</Folder>" * 1500, "geometries_deep": "<Placemark>" + "<MultiGeometry>" * 900,
        "others": "<NetworkLink/><GroundOverlay/><Placemark><Model/></Placemark><Placemark><Point/></Placemark>", "metres": line.replace("-45", "500000"),
        "ring_alone": f"<Placemark>{ring}</Placemark>", "ring_empty": polygon.replace(ring, "<LinearRing><coordinates> </coordinates></LinearRing>"),
        "outer_twice": polygon.replace("innerBoundaryIs", "outerBoundaryIs"), "cdata": "<Placemark><name><![CDATA[<b>&]]></name></Placemark>",
        "long_tuples": "<Placemark><LineString><coordinates>\x01 \x40\x011\xff,2 1,2</coordinates></LineString></Placemark>",
    }
    seeds = {name: f"<kml xmlns='http://www.opengis.net/kml/2.2'>{text}</kml>".encode() for name, text in texts.items()}
    link = lambda to: f"<kml><NetworkLink><Link><href>{to}</href></Link></NetworkLink></kml>".encode()  # noqa: E731
    seeds.update({
        "prefixed": seeds["line"].replace(b"</", b"</k:").replace(b"<", b"<k:").replace(b"<k:/k:", b"</k:").replace(b"xmlns=", b"xmlns:k="),
        "entity_bomb": (bomb + "<kml><Placemark><name>&j;</name></Placemark></kml>").encode(),
        "entity_in_coordinates": (bomb + "<kml><Placemark><Point><coordinates>&e;,1</coordinates></Point></Placemark></kml>").encode(),
        "entity_of_itself": b"<!DOCTYPE kml [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><kml><Placemark><name>&a;</name></Placemark></kml>",
        "entity_of_file": b"<!DOCTYPE kml [<!ENTITY a SYSTEM 'file:///etc/passwd'>]><kml><Placemark><name>&a;</name></Placemark></kml>",
        "says_utf16": b"<?xml version='1.0' encoding='UTF-16'?>" + seeds["point"], "utf16": seeds["point"].decode().encode("utf-16"),
        "cut": seeds["several"][:-60], "no_root": point.encode(), "other_root": b"<gpx/>", "mark": b"\xef\xbb\xbf" + seeds["point"],
        "ampersand": b"<kml><Placemark><name>a & b</name></Placemark></kml>", "bytes_invalid": b"<kml><Placemark><name>\xff\xfe</name></Placemark></kml>",
        "kmz": zipped("doc.kml", seeds["several"]), "kmz_cut": zipped("doc.kml", seeds["several"])[:-30], "kmz_without": zipped("a.txt", b"x"),
        "kmz_linked": zipped("doc.kml", link("a/b.kml"), "a/b.kml", link("c.kml"), "a/c.kml", seeds["several"]),
        "kmz_damaged": zipped("doc.kml", seeds["several"]).replace(b"doc.kml", b"doc.kmz", 1),
    })
    choice = {"line": lines, "point": 2, "polygon": 3}
    return {name: bytes([choice.get(name, everything), 1 if name == "several" else FOREIGN if name == "utf16" else 0]) + data
            for name, data in seeds.items()}


def zipped(*entries):
    """Names and contents by turns."""
    archive = io.BytesIO()
    with zipfile.ZipFile(archive, "w", zipfile.ZIP_DEFLATED) as file:
        for name, content in zip(entries[::2], entries[1::2]):
            file.writestr(zipfile.ZipInfo(name, (2024, 1, 1, 0, 0, 0)), content, zipfile.ZIP_DEFLATED)
    # A byte 1 begins a run.
    return archive.getvalue().replace(b"\x01", b"\x01\x01\x00")


def main():
    root = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent / "seeds"
    for make in (ascii_sections, csv, info_block, intake, shapefile, dbf, geometry_blob, projection_text,
                 legacy_polygons, dxf, ungenerate, kml):
        folder = root / make.__name__
        folder.mkdir(parents=True, exist_ok=True)
        seeds = make()
        for name, data in seeds.items():
            (folder / name).write_bytes(data)
        print(f"{make.__name__}: {len(seeds)} seeds, {sum(map(len, seeds.values()))} bytes")


if __name__ == "__main__":
    main()
