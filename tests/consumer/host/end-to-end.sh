#!/usr/bin/env bash
# end-to-end.sh HOST SOURCE_FOLDER WORK_FOLDER [CHECKER...]: the sample host with a fresh store: open actions go out, replies
# made from their documents come in, and the store holds what they say. A checker (valgrind) is put before every call.
set -euo pipefail
host=$1 source=$2 work=$3
shift 3
checker=("$@")

export LC_ALL=C  # documents are ISO-8859-1, which is no text in other locales
rm -rf "$work"
mkdir -p "$work"
export BexMsgCatalogPath=$source
store=$work/store.db exchange=$work/exchange log=$work/host.log

failed=0
# equal WHAT ACTUAL WANTED
equal() {
    if [[ $2 != "$3" ]]; then
        printf '%s is\n%s\ninstead of\n%s\n' "$1" "$2" "$3" >&2
        failed=1
    fi
}

# has WHAT FILE TEXT
has() {
    if ! grep -qaF -- "$3" "$2"; then
        printf '%s lacks: %s\n' "$1" "$3" >&2
        failed=1
    fi
}

# host WANTED_STATUS ARGUMENT...: runs it; its output is in $work/output.
host() {
    local wanted=$1 status=0
    shift
    "${checker[@]}" "$host" "$@" >"$work/output" 2>"$work/errors" || status=$?
    if ((status != wanted)); then
        printf 'host %s: status %s instead of %s\n' "$*" "$status" "$wanted" >&2
        cat "$work/errors" >&2
        exit 1
    fi
}

query() { sqlite3 -separator ' | ' "$store" "$1"; }

action() { query "SELECT status, priority, owner, duration, unit, due FROM actions WHERE id = '$1'"; }

# Wrong usage, no store, a store that is there already.
host 2
host 2 export "$store"
host 1 export "$store" "$exchange" "$log"
host 0 create "$store" "$source/store.sql"
host 1 create "$store" "$source/store.sql"

# What goes out: the open actions and no others.
host 0 export "$store" "$exchange" "$log" -t
equal "the outcome" "$(cat "$work/output")" "export: 3 done, 0 failed"
equal "the folder" "$(ls "$exchange")" $'ACT-2047.xpdl\nACT-2048.xpdl\nACT-2052.xpdl'
equal "the due dates" "$(query 'SELECT due FROM actions WHERE sent IS NOT NULL ORDER BY id')" \
    $'2004-03-06-08.00.00\n2004-03-09-20.00.00\n2005-04-15-06.00.00'
review=$exchange/ACT-2047.xpdl
has "the review" "$review" '<Activity Id = "PRC-311-04" Name = "Review housing">'
has "the review" "$review" '<ExtendedAttribute Name = "status" Value = "In work"/>'
has "the review" "$review" '<Priority>High</Priority>'
has "the review" "$review" '<Performer>'$'k.br\xfcckner''</Performer>'
has "the review" "$review" 'Planned from 2004-03-01-08.00.00 to 2004-03-06-08.00.00.'
has "the review" "$review" '<DeclaredType Id = "VERANT_QORPart"/>'
has "the review" "$review" '<ExtendedAttribute Name = "IN" Value = "HP40-100"/>'
has "the review" "$review" '<ExtendedAttribute Name = "OUT" Value = "*AUTO_ID#7"/>'
has "the review" "$review" 'PRODUCTS?context=HP-40%2Fstandard&amp;Nickname=Pump+HP-40'
has "the log" "$log" 'export of ACT-2047: done'
has "the log" "$log" 'WFInterop: >> QorWflActionManagerBase::GetActionInfo'
has "the log" "$log" 'WFInteropUrl: '

# What comes back. One reply tells much, one next to nothing, and four cannot be used.
sed -e 's/Value = "In work"/Value = "Completed"/' -e 's/<Priority>High</<Priority>Low</' \
    -e 's/<Duration>5</<Duration>3</' -e 's/DurationUnit = "D"/DurationUnit = "M"/' \
    -e 's/<InitialValue>Housing</<InitialValue>Housing, released</' -e 's/<Performer>.*</<Performer>release</' \
    "$review" >"$exchange/1.reply"
sed -e 's/Value = "Proposed"/Value = "In work"/' -e '/<Performer>/d' -e '/<Priority>/d' \
    -e '/<SimulationInformation>/,/<\/SimulationInformation>/d' "$exchange/ACT-2048.xpdl" >"$exchange/2.reply"
echo 'no document' >"$exchange/3.reply"
sed -e 's/Value = "Proposed"/Value = "Postponed"/' "$exchange/ACT-2052.xpdl" >"$exchange/4.reply"
sed -e 's/Value = "Proposed"/Value = "Rejected"/' -e 's/3F1A00C27B5D4E13/3F1A00C27B5D4E99/' \
    "$exchange/ACT-2052.xpdl" >"$exchange/5.reply"
sed -e 's/Value = "Proposed"/Value = "Rejected"/' -e 's/3F1A00C27B5D4E10/3F1A00C27B5D4E99/' \
    "$exchange/ACT-2052.xpdl" >"$exchange/6.reply"
before=$(action ACT-2052)
host 1 import "$store" "$exchange" "$log"
equal "the outcome" "$(cat "$work/output")" "import: 2 done, 4 failed"
equal "the review" "$(action ACT-2047)" "complete | 1 | release | 3 | M | 2004-06-01-08.00.00"
equal "the housing" "$(query "SELECT nickname FROM objects WHERE id = 2")" "Housing, released"
equal "the impeller" "$(query "SELECT nickname FROM objects WHERE id = 4")" "Impeller Ø 120"
equal "the balancing" "$(action ACT-2048)" "run | 2 | j.ødegård | 36 | h | 2004-03-09-20.00.00"
equal "the long-term test" "$(action ACT-2052)" "$before"
equal "what was answered" "$(query 'SELECT id FROM actions WHERE answered IS NOT NULL ORDER BY id')" \
    $'ACT-2047\nACT-2048'
has "the log" "$log" 'import of 3.reply: it names no action'
has "the log" "$log" "import of 4.reply: unknown status 'Postponed'"
has "the log" "$log" 'import of 5.reply: no object for Impeller'
has "the log" "$log" "import of 6.reply: the context is another product's"
equal "what waits" "$(cd "$exchange" && echo ./*.reply)" "./3.reply ./4.reply ./5.reply ./6.reply"

# Without those, there is nothing left to do; and the finished action does not go out again.
rm "$exchange"/*.reply
host 0 import "$store" "$exchange" "$log"
equal "the outcome" "$(cat "$work/output")" "import: 0 done, 0 failed"
host 0 export "$store" "$exchange" "$log"
equal "the outcome" "$(cat "$work/output")" "export: 2 done, 0 failed"
exit "$failed"
