#!/usr/bin/env bash
# Imports, exports, conversions and maps onto a disk that has too little room, and looks at what is left: the command
# says why and exits with 1, a database is whole and holds what it held, earlier files are as they were, and nothing
# lies beside them. With room the same must be done.
#
#   tests/robustness/full_disk.sh [-c FEATURES] [-l "PERCENTS"]     20000 features; room for 0, 10, 50, 90 and 99 %
#   tests/robustness/full_disk.sh --self-check     spoils what is left on purpose; fails when that goes unnoticed
#
# Root mounts a small file system in memory for it; where that can't be done it says so and exits with 77. KALDEX and
# KALDEX_BENCH_DATA name the command and the maker of data; without them those of build/bin are taken.
# Exits 1 when anything is not as it should be.
set -euo pipefail
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "$0")/common.sh"

features=20000
levels='0 10 50 90 99'
self_check=no
ample=$((4 << 30))

# Name | where room is short (disk: of the target; temp: of temporary files) | what stands there before | command.
# OUT is the folder of targets. "files" stand for what the command makes, a database for OUT/base.gpkg.
cases=(
  'import ascii lines|disk|before.gpkg|import ascii lines DATA/lines.txt OUT/base.gpkg project/new --model thematic'
  'import shapefile lines|disk|before.gpkg|import shapefile features DATA/lines.shp OUT/base.gpkg project/new --model thematic'
  'import shapefile objects|disk|before.gpkg|import shapefile features DATA/polygons.shp OUT/base.gpkg project/new --model cadastral'
  'import, DOS text|temp|before.gpkg|import ascii lines DATA/dos.txt OUT/base.gpkg project/new --model thematic'
  'import ascii samples|disk|before.gpkg|import ascii samples DATA/samples.txt OUT/base.gpkg project/new --model numeric'
  'import ascii points|disk|before.gpkg|import ascii points DATA/points.txt OUT/base.gpkg project/new --model thematic'
  'import ascii places|disk|before.gpkg|import ascii points DATA/places.txt OUT/base.gpkg project/new --model cadastral'
  'import ascii texts|disk|before.gpkg|import ascii texts DATA/texts.txt OUT/base.gpkg project/new --model thematic'
  'import ascii table|disk|before.gpkg|import ascii table DATA/rows.txt OUT/base.gpkg imoveis'
  'classify by classes|disk|zones.gpkg|classify ascii DATA/classes.txt OUT/base.gpkg project/zones'
  'classify by objects|disk|plots.gpkg|classify ascii DATA/objects.txt OUT/base.gpkg project/plots'
  'import csv table|disk|before.gpkg|import csv table DATA/rows.csv OUT/base.gpkg imoveis'
  'import csv table, its copy|temp|before.gpkg|import csv table DATA/rows.csv OUT/base.gpkg imoveis'
  'import csv nonspatial|disk|before.gpkg|import csv nonspatial DATA/rows.csv OUT/base.gpkg rows'
  'import csv nonspatial, copy|temp|before.gpkg|import csv nonspatial DATA/rows.csv OUT/base.gpkg rows'
  'update by csv|disk|table.gpkg|import csv update DATA/update.csv OUT/base.gpkg imoveis'
  'append columns of csv|disk|table.gpkg|import csv append-columns DATA/values.csv OUT/base.gpkg imoveis'
  'append columns, temporary|temp|table.gpkg|import csv append-columns DATA/values.csv OUT/base.gpkg imoveis'
  'import dxf lines|disk|before.gpkg|import dxf lines DATA/drawing.dxf OUT/base.gpkg project/new --model thematic'
  'import kml lines|disk|before.gpkg|import kml lines DATA/placemarks.kml OUT/base.gpkg project/new --model thematic'
  'import arcinfo lines|disk|before.gpkg|import arcinfo lines DATA/lines.gen OUT/base.gpkg project/new --model thematic'
  'export ascii lines|disk|nothing|export ascii lines DB project/lines OUT/lines.kdx'
  'export ascii lines, again|disk|files|export ascii lines DB project/lines OUT/lines.kdx --overwrite'
  'export ascii lines, added|disk|files|export ascii lines DB project/lines OUT/lines.kdx --append'
  'export ascii polygons|disk|files|export ascii polygons DB project/parcels OUT/parcels.kdx --overwrite'
  'export ascii contours|disk|files|export ascii contours DB project/relief OUT/relief.kdx --overwrite'
  'export ascii samples|disk|files|export ascii samples DB project/heights OUT/heights.kdx --overwrite'
  'export ascii points|disk|files|export ascii points DB project/points OUT/points.kdx --separator ; --overwrite'
  'export ascii labels|disk|files|export ascii labels DB project/zones OUT/zones.kdx --separator ; --overwrite'
  'export ascii labels, objects|disk|files|export ascii labels DB project/parcels OUT/parcels.kdx --separator ; --overwrite'
  'export ascii labels-swapped|disk|files|export ascii labels-swapped DB project/zones OUT/zones_CADLAB.typ --separator ; --overwrite'
  'export ascii texts|disk|files|export ascii texts DB project/names OUT/names.kdx --overwrite'
  'export ascii table|disk|files|export ascii table DB imoveis OUT/table.kdx --overwrite'
  'export shapefile by class|disk|nothing|export shapefile lines DB project/lines OUT/lines.shp --by class'
  'export shapefile by object|disk|files|export shapefile polygons DB project/parcels OUT/parcels.shp --by object --overwrite'
  'export shapefile by height|disk|files|export shapefile contours DB project/relief OUT/relief.shp --by height --overwrite'
  'export dxf lines|disk|files|export dxf lines DB project/lines OUT/lines.dxf --overwrite'
  'export dxf lines, added|disk|files|export dxf lines DB project/lines OUT/lines.dxf --append'
  'export dxf texts|disk|files|export dxf texts DB project/names OUT/names.dxf --overwrite'
  'export kml|disk|files|export kml lines DB project/lines OUT/lines.kml --overwrite'
  'export kmz|disk|files|export kml lines DB project/lines OUT/lines.kmz --overwrite'
  'export arcinfo lines|disk|files|export arcinfo lines DB project/lines OUT/lines.gen --overwrite'
  'export arcinfo samples|disk|files|export arcinfo samples DB project/heights OUT/heights.gen --overwrite'
  'convert to ascii|disk|files|convert DATA/lines.shp OUT/lines.kdx --kind lines --overwrite'
  'convert to shapefile|disk|files|convert DATA/lines.txt OUT/lines.shp --overwrite'
  'convert to a database|disk|files|convert DATA/lines.txt OUT/lines.gpkg --overwrite'
  'convert, its database|temp|files|convert DATA/lines.shp OUT/lines.kdx --kind lines --overwrite'
  'draw|disk|nothing|draw DB project/parcels OUT/map.png --size 1600x1200'
  'draw, again|disk|files|draw DB project/parcels OUT/map.png --size 1600x1200 --overwrite'
)

parse() {
  while [ $# -gt 0 ]; do
    case $1 in
      -c) features=$2 && shift ;;
      -l) levels=$2 && shift ;;
      --self-check) self_check=yes features=500 ;;
      -h | --help) usage && exit 0 ;;
      *) usage >&2 && exit 2 ;;
    esac
    shift
  done
}

skip() { echo "$script: skipped, $*" >&2 && exit 77; }

mount_disk() {
  [ "$(id -u)" = 0 ] || skip 'only root can mount a small disk'
  mkdir "$work/small"
  mount -t tmpfs -o size="$ample" kaldex-robustness "$work/small" 2>"$work/err" || skip "$(head -n 1 "$work/err")"
}
clean_up() {
  ! mountpoint -q "$work/small" || umount "$work/small"
  rm -rf "$work"
}

# set_room BYTES: that much can still be written to the disk.
set_room() {
  local used
  used=$(df -B1 --output=used "$work/small" | tail -n 1)
  mount -o remount,size=$((used + $1)) "$work/small"
}

make_contours() {
  awk -v count="$1" 'BEGIN {
    print "CONTOURLINES"
    for (i = 0; i < count; ++i) {
      print "LINE3D\nHEIGHT " i % 900
      for (j = 0; j < 10; ++j) printf "%.3f %.3f\n", 500000 + i % 100 * 40 + j * 3, 7000000 + int(i / 100) * 40 + j * j % 7
      print "END"
    }
    print "END" }'
}

make_texts() {
  awk -v count="$1" 'BEGIN {
    print "TEXT\nINFO\nINFO_END"
    for (i = 0; i < count; ++i) printf "%d;%d;nome do lugar %d;30;0.2;2;9;8;7;0;0;Mono\n", 300000 + i % 100 * 40, 7400000 + int(i / 100) * 40, i
    print "END" }'
}

# import_into DB PLACE FORMAT KIND FILE [OPTION...]
import_into() { run_quietly "$kaldex" import "$3" "$4" "$work/data/$5" "$1" "$2" "${@:6}" --yes; }

make_data() {
  run_quietly "$bench_data" "$work/data" --count "$features"
  cd "$work/data"
  sed 's/$/\r/' lines.txt >dos.txt
  # The labels of objects as places of them.
  sed 's/^POINTS$/POINT2D/' objects.txt >places.txt
  make_contours "$features" >relief.txt
  make_texts "$features" >texts.txt
  # Columns for the objects that a table made: by their identifiers, and in their order.
  awk -F, -v OFS=, 'NR == 1 { print "GEOID", "BAIRRO", "NOVA" } NR > 1 { print $1, "mudado", "valor " $1 }' rows.csv >update.csv
  awk -F, 'NR == 1 { print "LIVRE" } NR > 1 { print "livre " $1 }' rows.csv >values.csv
  cd - >/dev/null
}

# The database that is exported from, and those that an import finds there before.
prepare() {
  make_data
  db=$work/db.gpkg
  run_quietly "$kaldex" init "$db"
  import_into "$db" project/lines shapefile features lines.shp --model thematic
  import_into "$db" project/parcels shapefile features polygons.shp --model cadastral
  import_into "$db" project/relief ascii contours relief.txt --model numeric
  import_into "$db" project/heights ascii samples samples.txt --model numeric
  import_into "$db" project/points ascii points points.txt --model thematic
  import_into "$db" project/zones shapefile features polygons.shp --model thematic
  run_quietly "$kaldex" classify ascii "$work/data/classes.txt" "$db" project/zones --yes
  import_into "$db" project/names ascii texts texts.txt --model thematic
  import_into "$db" imoveis ascii table rows.txt
  printf '%s\n' 'LINES' '0 0' '1 1' 'END' 'END' >"$work/data/small.txt"
  run_quietly "$kaldex" init "$work/before.gpkg"
  import_into "$work/before.gpkg" project/earlier ascii lines small.txt --crs EPSG:31983
  for name in zones plots table; do cp "$work/before.gpkg" "$work/$name.gpkg"; done
  import_into "$work/zones.gpkg" project/zones shapefile features polygons.shp --model thematic
  import_into "$work/plots.gpkg" project/plots shapefile features polygons.shp --model cadastral
  import_into "$work/table.gpkg" imoveis ascii table rows.txt
}

# What a folder holds, names and content.
listing() { (cd "$1" && find . -type f -exec sha256sum {} + -o ! -type f -printf '%y %p %l\n' | sort); }

size_of() { du -s -B1 "$1" | cut -f 1; }

# number_of NAME: of a case.
number_of() {
  local i
  for i in "${!cases[@]}"; do [ "${cases[i]%%|*}" != "$1" ] || echo "$i"; done
}

# choose CASE: takes its fields apart; the folder of targets lies on the disk when that is what is short.
choose() {
  IFS='|' read -r name short before line <<<"${cases[$1]}"
  case $short in
    disk) out=$work/small/out temp=$work/temp ;;
    temp) out=$work/out temp=$work/small/out ;;
  esac
  line=${line//DATA/$work/data}
  line=${line//OUT/$out}
  line=${line//DB/$db}
}

# Empty folders, and in that of the targets what the case wants there before.
lay_out() {
  local file
  set_room "$ample"
  rm -rf "$work/small/out" "$work/out" "$work/temp"
  mkdir "$work/small/out" "$work/out" "$work/temp"
  # A size of nothing would be no limit.
  [ -s "$work/small/ballast" ] || head -c 4096 /dev/zero >"$work/small/ballast"
  case $before in
    *.gpkg) cp "$work/$before" "$out/base.gpkg" ;;
    files) for file in "$work/full"/*; do echo "earlier $file" >"$out/$(basename "$file")"; done ;;
  esac
}

run_case() {
  local words
  read -ra words <<<"$line"
  status=0
  # Questions are only an import's.
  [ "${words[0]}" = draw ] || words+=(--yes)
  TMPDIR=$temp "$kaldex" "${words[@]}" --quiet --lang en </dev/null >"$work/out.txt" 2>"$work/told" || status=$?
}

# What temporary files are made from: the file that is read.
source_of_copy() { tr ' ' '\n' <<<"$line" | grep "^$work/data/"; }

# With room the case is done; leaves what it made in full/ and the bytes that it took in `need`.
run_full() {
  local wanted=$before
  rm -rf "$work/full"
  mkdir "$work/full"
  # The files' names are known once they were made.
  [[ $before == *.gpkg ]] || before=nothing
  lay_out
  run_case
  [ "$status" -eq 0 ] || die "'$name' fails with room for all: $(head -n 1 "$work/told")"
  cp -r "$out/." "$work/full"
  before=$wanted
  need=$(size_of "$out")
  [[ $before != *.gpkg ]] || need=$((need - $(size_of "$work/$before")))
  # Temporary copies are at least about as large as what they are made from.
  [ "$short" != temp ] || need=$(($(size_of "$(source_of_copy)") / 2))
}

# judge LISTING: what is wrong with what a run left that had too little room.
judge() {
  [ "$status" -eq 1 ] || echo "exit code $status"
  grep -qiE "$reasons" "$work/told" || echo "no reason is told"
  if [[ $before == *.gpkg ]]; then
    # Before anything opens the database: that would put a journal away.
    [ "$(ls -A "$out")" = base.gpkg ] || echo "files beside the database: $(ls -A "$out" | paste -sd ' ')"
    check_import "$work/$before" "$work/full/base.gpkg" "$out/base.gpkg" no
    [ "$holds" = before ] || echo "the database holds $holds"
  elif [ "$(listing "$out")" != "$1" ]; then
    echo "files are not as they were: $(diff <(echo "$1") <(listing "$out") | grep '^[<>]' | head -n 2 | cut -c 1-80 | paste -sd ' ')"
  fi
  [ -z "$(ls -A "$temp")" ] || echo "temporary files are left: $(ls -A "$temp" | paste -sd ' ')"
}
reasons='disk( of .+)? is full'

one_run() {
  local level=$1 room listed faults said
  lay_out
  listed=$(listing "$out")
  room=$((need * level / 100 / 4096 * 4096))
  set_room "$room"
  run_case
  set_room "$ample"
  judge "$listed" >"$work/faults"
  faults=$(paste -sd ';' "$work/faults")
  printf '%-26s %9d %9d  %4d  %s\n' "$name" "$need" "$room" "$status" "${faults:-ok}"
  [ -z "$faults" ] || violations=$((violations + 1))
  runs=$((runs + 1))
  said=$(sed "s|$work/||g" "$work/told" | tail -n 2 | paste -sd ' ')
  told["${said:-nothing}"]+="$name $level %; "
}

run_all() {
  local i level said
  printf '%-26s %9s %9s  %4s  %s\n' what needs room exit verdict
  for i in "${!cases[@]}"; do
    choose "$i"
    run_full
    for level in $levels; do one_run "$level"; done
  done
  printf '\nWhat was told:\n'
  for said in "${!told[@]}"; do printf '  %s\n      %s\n' "$said" "${told[$said]}"; done | cut -c 1-300
  printf '\n%d runs, %d with a fault\n' "$runs" "$violations"
}

# expect_fault WHAT NAME COMMAND: judging must find something after the command has spoilt what a good failure left of the
# case of that name.
expect_fault() {
  local what=$1 listed
  choose "$(number_of "$2")"
  run_full
  lay_out
  listed=$(listing "$out")
  status=1
  echo 'the disk is full' >"$work/told"
  judge "$listed" >"$work/faults"
  [ ! -s "$work/faults" ] || die "what is as it should be is found wrong: $(head -n 1 "$work/faults")"
  eval "$3"
  judge "$listed" >"$work/faults"
  verdict "$what"
}

spoil() {
  # shellcheck disable=SC2016
  {
    expect_fault 'done, it says' 'export ascii lines, again' 'status=0'
    expect_fault 'a crash' 'export ascii lines, again' 'status=139'
    expect_fault 'no word' 'export ascii lines, again' ': >"$work/told"'
    expect_fault 'a half file' 'export ascii lines' 'head -c 1000 "$work/full/lines.kdx" >"$out/lines.kdx"'
    expect_fault 'a hidden folder' 'export ascii lines' 'mkdir "$out/.kaldex-1"'
    expect_fault 'an earlier file changed' 'export shapefile by object' 'echo >>"$out/parcels.dbf"'
    expect_fault 'an earlier file gone' 'export shapefile by object' 'rm "$out/parcels.shx"'
    expect_fault 'one of two files new' 'export ascii labels-swapped' 'cp "$work/full/zones_CADTAB.kdx" "$out"'
    expect_fault 'a temporary file left' 'import, DOS text' 'echo >"$temp/in.gpkg"'
    expect_fault 'a journal left' 'import ascii lines' 'echo >"$out/base.gpkg-journal"'
    expect_fault 'all of the import in spite of the failure' 'import ascii lines' 'cp "$work/full/base.gpkg" "$out/base.gpkg"'
    expect_fault 'a database cut' 'import ascii lines' 'truncate -s -8192 "$out/base.gpkg"'
    expect_fault 'a row gone' 'import ascii lines' 'sqlite3 "$out/base.gpkg" "PRAGMA foreign_keys = 0; DELETE FROM kdx_layers"'
    expect_fault 'all of a classification' 'classify by classes' 'cp "$work/full/base.gpkg" "$out/base.gpkg"'
    expect_fault 'classes without a classification' 'classify by classes' \
      'sqlite3 "$out/base.gpkg" "ATTACH '"'"'$work/full/base.gpkg'"'"' AS whole; INSERT INTO kdx_classes SELECT * FROM whole.kdx_classes"'
    expect_fault 'a value of a table changed' 'update by csv' 'sqlite3 "$out/base.gpkg" "UPDATE CG000002 SET BAIRRO = 1 WHERE GEOID = 9"'
  }
}

parse "$@"
need sqlite3 awk df mountpoint "$kaldex" "$bench_data"
make_work
mount_disk
declare -A told=()
violations=0
runs=0
prepare
if [ "$self_check" = yes ]; then spoil; else run_all; fi
[ "$violations" -eq 0 ]
