#!/usr/bin/env bash
# Kills imports into a database with earlier layers at random moments, and looks at what is left: the database opens,
# is whole, and holds what it held before or all of the import; with --keep-partial some imports may leave a prefix.
#
#   tests/robustness/kill_import.sh [-n ROUNDS] [-c FEATURES] [-s SEED] [-i "NUMBERS"]
#       50 rounds with 200000 features (points and rows of tables: five times as many), imports in turn; -i: only these
#   tests/robustness/kill_import.sh --self-check     breaks databases on purpose; fails when that goes unnoticed
#
# KALDEX and KALDEX_BENCH_DATA name the command and the maker of data; without them those of build/bin are taken.
# Exits 1 when anything is not as it should be.
set -euo pipefail
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "$0")/common.sh"

rounds=50
features=200000
self_check=no
seed=$RANDOM

# What --keep-partial may leave (prefix; whole: all or nothing as without it) | the database before | command.
imports=(
  'prefix|earlier|import shapefile features DATA/lines.shp DB project/new --model thematic'
  'prefix|earlier|import shapefile features DATA/polygons.shp DB project/new --model cadastral'
  'prefix|earlier|import ascii lines DATA/lines.txt DB project/new --model thematic'
  'whole|earlier|import ascii points DATA/points.txt DB project/new --model thematic'
  'whole|earlier|import ascii points DATA/places.txt DB project/new --model cadastral'
  'whole|zones|classify ascii DATA/classes.txt DB project/zones'
  'whole|plots|classify ascii DATA/objects.txt DB project/plots'
  'whole|earlier|import ascii table DATA/rows.txt DB imoveis'
  'whole|earlier|import csv nonspatial DATA/rows.csv DB rows'
  'prefix|earlier|import dxf lines DATA/drawing.dxf DB project/new --model thematic'
  'prefix|earlier|import kml lines DATA/placemarks.kml DB project/new --model thematic'
  'prefix|earlier|import arcinfo lines DATA/lines.gen DB project/new --model thematic'
)
chosen=("${!imports[@]}")

parse() {
  while [ $# -gt 0 ]; do
    case $1 in
      -n) rounds=$2 && shift ;;
      -c) features=$2 && shift ;;
      -s) seed=$2 && shift ;;
      -i) read -ra chosen <<<"$2" && shift ;;
      --self-check) self_check=yes features=1500 ;;
      -h | --help) usage && exit 0 ;;
      *) usage >&2 && exit 2 ;;
    esac
    shift
  done
}

# choose NUMBER: takes an import apart.
choose() {
  local name
  IFS='|' read -r leaves name line <<<"${imports[$1]}"
  before=$work/$name.gpkg full=$work/full$1.gpkg
}

# import DB [OPTION...]: the chosen one
import() {
  local words=${line//DATA/$work/data}
  read -ra words <<<"${words//DB/$1}"
  exec "$kaldex" "${words[@]}" --yes --quiet "${@:2}" </dev/null >"$work/out" 2>"$work/err"
}

seconds_since() { awk -v from="$1" -v to="$EPOCHREALTIME" 'BEGIN { printf "%.3f", to - from }'; }
random_moment() { awk -v n="$RANDOM" -v m="$RANDOM" -v most="$1" 'BEGIN { printf "%.4f", (n * 32768 + m) / 1073741824 * most }'; }

# Databases with earlier layers, small ones and those that labels are for, and what each import makes of them when it is
# let be.
prepare() {
  local i start
  run_quietly "$bench_data" "$work/data" --count "$features"
  run_quietly "$bench_data" "$work/few" --count 500 --only polygons
  # The labels of objects as places of them.
  sed 's/^POINTS$/POINT2D/' "$work/data/objects.txt" >"$work/data/places.txt"
  run_quietly "$kaldex" init "$work/earlier.gpkg"
  run_quietly "$kaldex" import shapefile features "$work/few/polygons.shp" "$work/earlier.gpkg" project/earlier \
    --model cadastral --category earlier --yes
  cp "$work/earlier.gpkg" "$work/zones.gpkg"
  cp "$work/earlier.gpkg" "$work/plots.gpkg"
  run_quietly "$kaldex" import shapefile features "$work/data/polygons.shp" "$work/zones.gpkg" project/zones --model thematic --yes
  run_quietly "$kaldex" import shapefile features "$work/data/polygons.shp" "$work/plots.gpkg" project/plots --model cadastral --yes
  for i in "${chosen[@]}"; do
    choose "$i"
    cp "$before" "$full"
    start=$EPOCHREALTIME
    (import "$full") || die "'$line' fails when nobody disturbs it: $(head -n 1 "$work/err")"
    lasts[i]=$(seconds_since "$start")
    echo "import $i takes ${lasts[i]} s: $line"
  done
}

# kill_at SECONDS [OPTION...]: leaves in `ended` how the process did.
kill_at() {
  local pid status=0
  (import "$work/db.gpkg" "${@:2}") &
  pid=$!
  sleep "$1"
  kill -9 "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || status=$?
  case $status in
    137) ended=killed ;;
    0) ended=finished ;;
    *) ended="exit $status" ;;
  esac
}

one_round() {
  local number=$1 i partial=no option=() prefix_allowed=no moment journal=- faults
  i=${chosen[$((number % ${#chosen[@]}))]}
  choose "$i"
  [ $((number / ${#chosen[@]} % 2)) -eq 0 ] || partial=yes option=(--keep-partial)
  [ "$leaves" = whole ] || prefix_allowed=$partial
  rm -f "$work"/db.gpkg*
  cp "$before" "$work/db.gpkg"
  moment=$(random_moment "$(awk -v t="${lasts[i]}" 'BEGIN { print t * 1.05 }')")
  kill_at "$moment" "${option[@]}"
  [ ! -s "$work/db.gpkg-journal" ] && [ ! -s "$work/db.gpkg-wal" ] || journal=hot
  check_import "$before" "$full" "$work/db.gpkg" "$prefix_allowed" >"$work/faults"
  case $ended in
    finished) [ "$holds" = all ] || echo "it said that it was done, and holds $holds" >>"$work/faults" ;;
    exit*) echo "it ended by itself with $ended: $(head -n 1 "$work/err")" >>"$work/faults" ;;
  esac
  faults=$(paste -sd ';' "$work/faults")
  printf '%5d  %6d  %-7s  %8s  %-8s  %-7s  %-16s  %s\n' "$((number + 1))" "$i" "$partial" "$moment" "$ended" "$journal" "$holds" "${faults:-ok}"
  tally["$i $partial ${holds/#[0-9]* features/part}"]=$((${tally["$i $partial ${holds/#[0-9]* features/part}"]:-0} + 1))
  [ -z "$faults" ] || violations=$((violations + 1))
}

summary() {
  local i partial
  printf '\n%6s  %-7s  %7s  %7s  %7s  %7s\n' import partial before part all broken
  for i in "${chosen[@]}"; do
    for partial in no yes; do
      printf '%6d  %-7s  %7d  %7d  %7d  %7d\n' "$i" "$partial" "${tally["$i $partial before"]:-0}" \
        "${tally["$i $partial part"]:-0}" "${tally["$i $partial all"]:-0}" "${tally["$i $partial broken"]:-0}"
    done
  done
  printf '\n%d rounds, %d with a fault (seed %d)\n' "$rounds" "$violations" "$seed"
}

expect() {
  local what=$1 partial=$2
  check_import "$before" "$full" "$work/db.gpkg" "$partial" >"$work/faults"
  verdict "$what"
}

# spoiled FROM WHAT PARTIAL SQL: the checks must find something in a database that was spoilt like this: FROM is that
# after a whole import or the one before.
spoiled() {
  cp "$1" "$work/db.gpkg"
  sqlite3 -batch "$work/db.gpkg" "$4" >"$work/out" 2>&1 || die "could not spoil a database: $(head -n 1 "$work/out")"
  [ "$(fingerprint "$1")" != "$(fingerprint "$work/db.gpkg")" ] || die "'$2' spoils nothing"
  expect "$2" "$3"
}

# spoil_import NUMBER: begins with what is as it should be.
spoil_import() {
  choose "$1"
  cp "$full" "$work/db.gpkg"
  check_import "$before" "$full" "$work/db.gpkg" no >"$work/faults"
  [ ! -s "$work/faults" ] && [ "$holds" = all ] || die "all of '$line' is found broken: $(head -n 1 "$work/faults")"
  cp "$before" "$work/db.gpkg"
  check_import "$before" "$full" "$work/db.gpkg" no >"$work/faults"
  [ ! -s "$work/faults" ] && [ "$holds" = before ] || die "nothing of '$line' is found broken: $(head -n 1 "$work/faults")"
  new=$(feature_tables "$full" | grep '^new_' || true)
  # The triggers call functions of geometry that the shell does not have.
  untriggered=$(in_db "$full" "SELECT 'DROP TRIGGER \"' || name || '\";' FROM sqlite_master WHERE type = 'trigger'")
}

spoil_features() {
  spoil_import 0
  spoiled "$full" 'a row of the earlier layer gone' yes \
    'PRAGMA foreign_keys = 0; DELETE FROM earlier_1_polygons WHERE fid = 7'
  spoiled "$full" 'an attribute of the earlier layer changed' yes 'UPDATE CG000002 SET VALOR = 0 WHERE GEOID = 3'
  spoiled "$full" 'half of an import that is all or nothing' no "DELETE FROM \"$new\" WHERE fid > 1000"
  spoiled "$full" 'a gap in what --keep-partial left' yes "DELETE FROM \"$new\" WHERE fid = 10"
  spoiled "$full" 'a feature that is another one' yes \
    "$untriggered UPDATE \"$new\" SET geom = (SELECT geom FROM \"$new\" WHERE fid = 2) WHERE fid = 1"
  spoiled "$full" 'an entry of the index gone' yes "DELETE FROM rtree_${new}_geom WHERE id = 5"
  spoiled "$full" 'a node of the index emptied' yes "UPDATE rtree_${new}_geom_node SET data = zeroblob(length(data)) WHERE nodeno = 1"
  cp "$full" "$work/db.gpkg"
  dd if=/dev/zero of="$work/db.gpkg" bs=4096 seek=30 count=4 conv=notrunc status=none
  expect 'pages of zeros' yes
}

spoil_points() {
  spoil_import 3
  spoiled "$full" 'half of the points' no "$untriggered DELETE FROM \"$new\" WHERE fid > 1000; DELETE FROM rtree_${new}_geom WHERE id > 1000"
  spoiled "$full" 'a point of another class' no "$untriggered UPDATE \"$new\" SET class_id = class_id + 1 WHERE fid = 5"
  spoiled "$full" 'a class of the points gone' no \
    "PRAGMA foreign_keys = 0; DELETE FROM kdx_classes WHERE id = (SELECT class_id FROM \"$new\" WHERE fid = 5)"
  spoil_import 4
  spoiled "$full" 'a place without its object' no 'DELETE FROM GA000002 WHERE kdx_fid = 9'
}

spoil_labels() {
  spoil_import 5
  spoiled "$full" 'a polygon left without class' no "$untriggered UPDATE zones_2_polygons SET class_id = 0 WHERE fid = 9"
  spoiled "$full" 'half of a classification' no \
    "$untriggered UPDATE zones_2_polygons SET class_id = 0, label_x = NULL, label_y = NULL WHERE fid > 1000"
  spoiled "$before" 'classes without a classification' no \
    "ATTACH '$full' AS whole; INSERT INTO kdx_classes SELECT * FROM whole.kdx_classes"
  spoil_import 6
  spoiled "$full" 'an object of a label gone' no \
    'PRAGMA foreign_keys = 0; DELETE FROM OJ000004 WHERE ID = (SELECT MAX(ID) FROM OJ000004)'
  spoiled "$full" 'an anchor of a label gone' no \
    'DELETE FROM plots_2_anchors WHERE fid = (SELECT MAX(fid) FROM plots_2_anchors)'
  spoiled "$full" 'an earlier anchor changed' no 'UPDATE plots_2_anchors SET polygons = NULL WHERE fid = 3'
}

spoil_tables() {
  spoil_import 7
  spoiled "$full" 'half of a table' no 'DELETE FROM CG000003 WHERE GEOID > 1000; DELETE FROM OJ000003 WHERE ID > 1000'
  spoiled "$full" 'an object without attributes' no 'DELETE FROM CG000003 WHERE GEOID = (SELECT MAX(GEOID) FROM CG000003)'
  spoiled "$full" 'a value changed' no "UPDATE CG000003 SET BAIRRO = '' WHERE GEOID = (SELECT MAX(GEOID) FROM CG000003)"
  spoil_import 8
  spoiled "$full" 'a row of a table gone' no 'DELETE FROM CG000003 WHERE kdx_fid = 9'
}

parse "$@"
need sqlite3 awk "$kaldex" "$bench_data"
make_work
declare -A tally=()
lasts=()
violations=0
RANDOM=$seed
prepare
if [ "$self_check" = yes ]; then
  spoil_features
  spoil_points
  spoil_labels
  spoil_tables
else
  printf '\n%5s  %6s  %-7s  %8s  %-8s  %-7s  %-16s  %s\n' round import partial moment ended journal holds verdict
  for ((round = 0; round < rounds; round++)); do one_round "$round"; done
  summary
fi
[ "$violations" -eq 0 ]
