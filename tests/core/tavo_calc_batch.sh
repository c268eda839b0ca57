#!/bin/bash
# tavo_calc_batch.sh PROGRAM - drives the console program as a script does: through a pipe, line by line.
set -u
program=$1

check() { # what, expected, found
    [ "$2" = "$3" ] && return
    printf '%s: expected "%s", found "%s"\n' "$1" "$2" "$3" >&2
    exit 1
}

# Each line is answered before the next one is sent.
coproc calc { "$program" batch; }
pid=$calc_PID
exec {to}>&"${calc[1]}" {from}<&"${calc[0]}"
eval "exec ${calc[1]}>&-"
for line in $'roots 0 0 -8|2\t2\t2' '|error: no command' 'convert presion 1 atm mmHg|760'; do
    echo "${line%%|*}" >&"$to"
    read -r -t 20 answer <&"$from" || answer='nothing'
    check "answer to ${line%%|*}" "${line#*|}" "$answer"
done
exec {to}>&-
wait "$pid"
check 'status of a batch with an error' 1 $?

echo 'convert volumen 1 l cm³' | "$program" batch >/dev/null
check 'status of a batch without error' 0 $?
check 'a last line without its end' 1000 "$(printf 'convert volumen 1 l cm³' | "$program" batch)"
"$program" roots 1 2 >/dev/null
check 'status of a command with an error' 1 $?
check 'lines of an isotherm' 101 "$("$program" isotherm 21 8 280 1 0.05 1 | wc -l)"
check 'lines of an isotherm in a batch' 1 "$(echo 'isotherm 21 8 280 1 0.05 1' | "$program" batch | wc -l)"
check 'a missing database' "error: file /nonexistent/data was not found" "$("$program" --home /nonexistent gas 1 1 300)"
check 'a folder from the environment' "error: file /nonexistent/data was not found" \
    "$(TAVO_GAS_HOME=/nonexistent "$program" gas 1 1 300)"
check 'a mark at the start' 760 "$(printf '\xEF\xBB\xBFconvert presion 1 atm mmHg\n' | "$program" batch)"
check 'an unknown option' 'error: unknown option --homeX; tavo-calc --help lists them' "$("$program" --homeX gas 1 1 300)"
check 'a forgotten folder' 'error: --home needs a folder' "$("$program" --home)"
for word in batch --help --version; do
    check "$word with a word after it" "error: $word takes no arguments" "$("$program" "$word" x </dev/null)"
done
