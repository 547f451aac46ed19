# shellcheck shell=bash disable=SC2034
# Shared by the robustness scripts: the command under test, a folder that goes in the end, and what is looked at in a
# geographic database after something went wrong. The checks print what they find, and nothing when all is well.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
kaldex=${KALDEX:-$root/build/bin/kaldex}
bench_data=${KALDEX_BENCH_DATA:-$root/build/bin/kaldex-bench-data}
script=$(basename "$0")

usage() { sed -n '2,/^set -/{/^#/s/^# \{0,1\}//p}' "$0"; }
die() { echo "$script: $*" >&2 && exit 2; }

need() {
  local tool
  for tool in "$@"; do command -v "$tool" >/dev/null || die "needs $tool"; done
}

# make_work: a folder `work` for everything that the script makes.
make_work() {
  work=$(mktemp -d "${TMPDIR:-/tmp}/kaldex-${script%.sh}-XXXXXX")
  trap 'clean_up' EXIT
  trap 'exit 130' INT TERM
}
clean_up() { rm -rf "$work"; }

run_quietly() { "$@" </dev/null >"$work/out" 2>"$work/err" || die "'$*' failed: $(head -n 1 "$work/err")"; }

# What SQLite says, be it an answer or that the database is broken.
in_db() { sqlite3 -batch "$@" 2>&1 || true; }

# Tables with data: all that the database tells other programs of, but the counters.
data_tables() { in_db "$1" "SELECT table_name FROM gpkg_contents WHERE table_name <> 'kdx_sequences' ORDER BY 1"; }
feature_tables() { in_db "$1" "SELECT table_name FROM gpkg_contents WHERE data_type = 'features' ORDER BY 1"; }
has_table() { [ "$(in_db "$1" "SELECT COUNT(*) FROM sqlite_master WHERE name = '$2'")" = 1 ]; }

# Everything in the database, schema included, as a number.
fingerprint() { in_db "$1" '.sha3sum --schema'; }

# Opens for us, is whole for SQLite, and its spatial indexes are whole and hold all that their tables do.
check_health() {
  local db=$1 answer table
  "$kaldex" info "$db" --json </dev/null >/dev/null 2>"$work/err" || {
    echo "does not open: $(head -n 1 "$work/err")"
    return
  }
  answer=$(in_db "$db" 'PRAGMA integrity_check; PRAGMA foreign_key_check')
  [ "$answer" = ok ] || echo "integrity_check says $(head -n 1 <<<"$answer")"
  for table in $(feature_tables "$db"); do
    has_table "$db" "rtree_${table}_geom" || continue
    answer=$(in_db "$db" "SELECT rtreecheck('rtree_${table}_geom')")
    [ "$answer" = ok ] || echo "rtreecheck of $table says $(head -n 1 <<<"$answer")"
    answer=$(in_db "$db" "SELECT (SELECT COUNT(*) FROM rtree_${table}_geom) - (SELECT COUNT(*) FROM \"$table\")")
    [ "$answer" = 0 ] || echo "the index of $table is off by $answer"
  done
}

# The columns of a table that say the same whenever an import runs: all but when an object was made.
lasting_columns() { in_db "$1" "SELECT group_concat('\"' || name || '\"') FROM pragma_table_info('$2') WHERE name NOT IN ('DATA', 'HORA')"; }

# count_lost FROM DB TABLE: how many rows of the first are not in the second just so.
count_lost() {
  local columns
  columns=$(lasting_columns "$1" "$3")
  in_db "$2" "ATTACH '$1' AS other; SELECT COUNT(*) FROM (SELECT $columns FROM other.\"$3\" EXCEPT SELECT $columns FROM main.\"$3\")"
}

# learn_changes BEFORE FULL: leaves in `changed` the tables of which a whole import changes rows that were there before,
# between blanks.
declare -A learnt=()
learn_changes() {
  local table
  changed=${learnt["$1 $2"]:-}
  [ -z "$changed" ] || return 0
  changed=' '
  for table in $(data_tables "$1"); do
    [ "$(count_lost "$1" "$2" "$table")" = 0 ] || changed+="$table "
  done
  learnt["$1 $2"]=$changed
}

# check_kept BEFORE FULL DB: every row that was there before is there still, unless the whole import changes it.
check_kept() {
  local before=$1 full=$2 db=$3 table lost
  learn_changes "$before" "$full"
  for table in $(data_tables "$before"); do
    [[ $changed != *" $table "* ]] || continue
    lost=$(count_lost "$before" "$db" "$table")
    [ "$lost" = 0 ] || echo "rows of $table that were there before are gone or changed: $lost"
  done
}

count_rows() { in_db "$1" "SELECT COUNT(*) FROM \"$2\""; }

# is_complete FULL DB: each table holds the rows that it has after a whole import.
is_complete() {
  local full=$1 db=$2 table
  for table in $(data_tables "$full"); do
    has_table "$db" "$table" || return 1
    [ "$(count_rows "$full" "$table")" = "$(count_rows "$db" "$table")" ] || return 1
  done
  for table in $(data_tables "$full"); do
    [ "$(count_lost "$full" "$db" "$table")" = 0 ] || return 1
  done
}

# check_prefix BEFORE FULL DB: of each new table the first rows of the whole import, without a gap, and nothing else.
# Their number is left in `prefix`.
check_prefix() {
  local before=$1 full=$2 db=$3 table strays count last
  prefix=0
  for table in $(feature_tables "$full"); do
    has_table "$before" "$table" && continue
    has_table "$db" "$table" || continue
    strays=$(in_db "$db" "ATTACH '$full' AS whole; SELECT COUNT(*) FROM (SELECT fid, geom FROM main.\"$table\" EXCEPT SELECT fid, geom FROM whole.\"$table\")")
    [ "$strays" = 0 ] || echo "$table holds $strays features that the whole import does not"
    IFS='|' read -r count last < <(in_db "$db" "SELECT COUNT(*), IFNULL(MAX(fid), 0) FROM \"$table\"")
    [ "$count" = "$last" ] || echo "$table has gaps: $count features up to number $last"
    prefix=$((prefix + count))
  done
}

# check_import BEFORE FULL DB PARTIAL: what an import left that did not end well. Leaves in `holds` what that is; with
# PARTIAL a prefix is as good as all or nothing.
check_import() {
  local before=$1 full=$2 db=$3 partial=$4
  holds=broken
  check_health "$db"
  if [ "$(fingerprint "$db")" = "$(fingerprint "$before")" ]; then
    holds=before
    return
  fi
  check_kept "$before" "$full" "$db"
  prefix=0
  check_prefix "$before" "$full" "$db" >"$work/prefix"
  cat "$work/prefix"
  if is_complete "$full" "$db"; then
    holds=all
  else
    holds="$prefix features"
    [ "$partial" = yes ] || echo "neither all of the import nor nothing of it"
  fi
}

# verdict WHAT: for --self-check; what has been spoilt must have left faults.
verdict() {
  if [ -s "$work/faults" ]; then
    printf 'noticed    %-45s %s\n' "$1" "$(head -n 1 "$work/faults")"
  else
    printf 'UNNOTICED  %s\n' "$1"
    violations=$((violations + 1))
  fi
}
