#!/usr/bin/env bash
# Kills imports into a database with an earlier layer at random moments, and looks at what is left: the database opens,
# is whole, and holds the earlier layer alone or all of the import; with --keep-partial perhaps a prefix of it.
#
#   tests/robustness/kill_import.sh [-n ROUNDS] [-c FEATURES] [-s SEED]     50 rounds, 200000 features
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

# Format, kind, file, model.
imports=(
  'shapefile features lines.shp thematic'
  'shapefile features polygons.shp cadastral'
  'ascii lines lines.txt thematic'
)

parse() {
  while [ $# -gt 0 ]; do
    case $1 in
      -n) rounds=$2 && shift ;;
      -c) features=$2 && shift ;;
      -s) seed=$2 && shift ;;
      --self-check) self_check=yes features=2000 ;;
      -h | --help) usage && exit 0 ;;
      *) usage >&2 && exit 2 ;;
    esac
    shift
  done
}

# import NUMBER DB [OPTION...]
import() {
  local format kind file model
  read -r format kind file model <<<"${imports[$1]}"
  exec "$kaldex" import "$format" "$kind" "$work/data/$file" "$2" project/new --model "$model" --yes --quiet "${@:3}" \
    </dev/null >"$work/out" 2>"$work/err"
}

seconds_since() { awk -v from="$1" -v to="$EPOCHREALTIME" 'BEGIN { printf "%.3f", to - from }'; }
random_moment() { awk -v n="$RANDOM" -v m="$RANDOM" -v most="$1" 'BEGIN { printf "%.4f", (n * 32768 + m) / 1073741824 * most }'; }

# A database with an earlier layer, and what each import makes of it when it is let be.
prepare() {
  local i start
  run_quietly "$bench_data" "$work/data" --count "$features"
  run_quietly "$bench_data" "$work/earlier" --count 500
  run_quietly "$kaldex" init "$work/before.gpkg"
  run_quietly "$kaldex" import shapefile features "$work/earlier/polygons.shp" "$work/before.gpkg" project/earlier \
    --model cadastral --category earlier --yes
  for i in "${!imports[@]}"; do
    cp "$work/before.gpkg" "$work/full$i.gpkg"
    start=$EPOCHREALTIME
    (import "$i" "$work/full$i.gpkg") || die "the import '${imports[$i]}' fails when nobody disturbs it: $(head -n 1 "$work/err")"
    lasts[i]=$(seconds_since "$start")
    echo "import $i takes ${lasts[i]} s: ${imports[$i]}, $features features"
  done
}

# kill_at SECONDS IMPORT [OPTION...]: leaves in `ended` how the process did.
kill_at() {
  local pid status=0
  (import "$2" "$work/db.gpkg" "${@:3}") &
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
  local number=$1 i=$(($1 % ${#imports[@]})) partial=no option=() moment journal=- faults
  [ $((number / ${#imports[@]} % 2)) -eq 0 ] || partial=yes option=(--keep-partial)
  rm -f "$work"/db.gpkg*
  cp "$work/before.gpkg" "$work/db.gpkg"
  moment=$(random_moment "$(awk -v t="${lasts[i]}" 'BEGIN { print t * 1.05 }')")
  kill_at "$moment" "$i" "${option[@]}"
  [ ! -s "$work/db.gpkg-journal" ] && [ ! -s "$work/db.gpkg-wal" ] || journal=hot
  check_import "$work/before.gpkg" "$work/full$i.gpkg" "$work/db.gpkg" "$partial" >"$work/faults"
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
  for i in "${!imports[@]}"; do
    for partial in no yes; do
      printf '%6d  %-7s  %7d  %7d  %7d  %7d\n' "$i" "$partial" "${tally["$i $partial before"]:-0}" \
        "${tally["$i $partial part"]:-0}" "${tally["$i $partial all"]:-0}" "${tally["$i $partial broken"]:-0}"
    done
  done
  printf '\n%d rounds, %d with a fault (seed %d)\n' "$rounds" "$violations" "$seed"
}

# expect_fault WHAT SQL: the checks must find something in a whole import that was spoilt like this.
expect_fault() {
  local what=$1 partial=$2 sql=$3
  cp "$work/full0.gpkg" "$work/db.gpkg"
  sqlite3 -batch "$work/db.gpkg" "$sql" >"$work/out" 2>&1 || die "could not spoil a database: $(head -n 1 "$work/out")"
  check_import "$work/before.gpkg" "$work/full0.gpkg" "$work/db.gpkg" "$partial" >"$work/faults"
  if [ -s "$work/faults" ]; then
    printf 'noticed    %-40s %s\n' "$what" "$(head -n 1 "$work/faults")"
  else
    printf 'UNNOTICED  %s\n' "$what"
    violations=$((violations + 1))
  fi
}

spoil() {
  local new untriggered
  new=$(feature_tables "$work/full0.gpkg" | grep '^new_')
  # The triggers call functions of geometry that the shell does not have.
  untriggered=$(in_db "$work/full0.gpkg" "SELECT 'DROP TRIGGER \"' || name || '\";' FROM sqlite_master WHERE type = 'trigger'")
  cp "$work/full0.gpkg" "$work/db.gpkg"
  check_import "$work/before.gpkg" "$work/full0.gpkg" "$work/db.gpkg" no >"$work/faults"
  [ ! -s "$work/faults" ] && [ "$holds" = all ] || die "a whole import is found broken: $(head -n 1 "$work/faults")"
  expect_fault 'a row of the earlier layer gone' yes \
    'PRAGMA foreign_keys = 0; DELETE FROM earlier_1_polygons WHERE fid = 7'
  expect_fault 'an attribute of the earlier layer changed' yes 'UPDATE CG000002 SET VALOR = 0 WHERE GEOID = 3'
  expect_fault 'half of an import that is all or nothing' no "DELETE FROM \"$new\" WHERE fid > 1000"
  expect_fault 'a gap in what --keep-partial left' yes "DELETE FROM \"$new\" WHERE fid = 10"
  expect_fault 'a feature that is another one' yes \
    "$untriggered UPDATE \"$new\" SET geom = (SELECT geom FROM \"$new\" WHERE fid = 2) WHERE fid = 1"
  expect_fault 'an entry of the index gone' yes "DELETE FROM rtree_${new}_geom WHERE id = 5"
  expect_fault 'a node of the index emptied' yes "UPDATE rtree_${new}_geom_node SET data = zeroblob(length(data)) WHERE nodeno = 1"
  cp "$work/full0.gpkg" "$work/db.gpkg"
  dd if=/dev/zero of="$work/db.gpkg" bs=4096 seek=30 count=4 conv=notrunc status=none
  check_import "$work/before.gpkg" "$work/full0.gpkg" "$work/db.gpkg" yes >"$work/faults"
  [ -s "$work/faults" ] && echo "noticed    pages of zeros" || { echo 'UNNOTICED  pages of zeros' && violations=$((violations + 1)); }
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
  spoil
else
  printf '\n%5s  %6s  %-7s  %8s  %-8s  %-7s  %-16s  %s\n' round import partial moment ended journal holds verdict
  for ((round = 0; round < rounds; round++)); do one_round "$round"; done
  summary
fi
[ "$violations" -eq 0 ]
