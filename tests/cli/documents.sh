#!/usr/bin/env bash
# Tries what a document shows: its scripts, its commands and its tables of expressions.
#
#   documents.sh PROGRAM SOURCE_ROOT DOCUMENT
#
# In the order of the document and in one folder, with the C locale:
#   ```lua             is saved under the name in its first line, "-- NAME.lua", and must run
#   ```console         "$ command" lines, each with exactly what it prints, errors too
#   ```console random  the same for random deals: any cards and figures will do, but averages of a
#                      thousand values or more must agree within five standard errors
#   ```sh              commands that must succeed
#   | `expression` | `results` | ...   is true in a script that runs behind hands.lua
# A document with such tables must show every method of the type C.
set -uo pipefail

document=$(realpath "$3")
# shellcheck source=tests/support/own_folder.sh
source "$(dirname "$0")/../support/own_folder.sh"
mkdir build ../bin ../home
ln -s "$program" "$folder/bin/tamrel"
ln -s "$(dirname "$program")" build/release
ln -s "$root/examples" examples

export HOME="$folder/home" PATH="$folder/bin:$PATH"
failures=0

failed() {
    echo "$document: $1" >&2
    failures=$((failures + 1))
}

# --- one block at a time, in the file `block` ---

try_lua() {
    local name
    name=$(sed -n '1s/^-- \([a-z0-9_]*\.lua\)$/\1/p' block)
    [ -n "$name" ] || failed "a script does not begin with its name: $(head -1 block)"
    cp block "${name:=unnamed.lua}"
    timeout 60 tamrel -n 2 -f none "$name" >out 2>&1 || failed "$name: $(cat out)"
}

# How many hands were dealt depends on the threads, the sign of a not-a-number on the machine.
tidy() { sed -E -e 's|^(Number of hands dealt:).*|\1 SOME|' -e 's|-nan|nan|g'; }

# A hand becomes HAND, a figure N.
blur() { tidy | sed -E -e 's/[2-9TJQKA]*(\.[2-9TJQKA]*){3}/HAND/g' -e 's/-?(nan|inf|[0-9.]+(e[-+]?[0-9]+)?)/N/g'; }

# Lines of totals, "name: sum / count = average ... est. deviation": ours against the document's.
averages_agree() {
    awk 'match($0, /: [^ ]+ \/ [0-9]+ = .*est\. /) {
             name = substr($0, 1, RSTART - 1)
             line = ++lines[FNR == NR]
             split(substr($0, RSTART + 2), word, " ")
             deviation = $NF
             if (FNR == NR) {
                 average[line] = word[5]
                 error2[line] = deviation ^ 2 / word[3]
             } else if (word[3] >= 1000) {
                 gap = average[line] - word[5]
                 if (gap ^ 2 > 25 * (error2[line] + deviation ^ 2 / word[3])) {
                     print name ": the average is " average[line] ", not " word[5]
                     wrong = 1
                 }
             }
         }
         END { exit wrong }' now block
}

replay() {
    local line
    while IFS= read -r line; do
        printf '%s\n' "$line"
        (eval "${line#$ }") 2>&1 </dev/null
    done < <(grep '^\$ ' block)
}

try_console() {
    replay >now
    diff -u --label documented --label now <(tidy <block) <(tidy <now) || failed "not what is shown"
}

try_console_random() {
    replay >now
    diff -u --label documented --label now <(blur <block) <(blur <now) || failed "not of the form shown"
    averages_agree || failed "not the averages shown"
}

# The scripts are run by others: the demo by the gate, the test is what this belongs to.
scripts/demo() { [ -x "$root/scripts/demo" ]; }
scripts/test() { [ -x "$root/scripts/test" ]; }

try_sh() {
    local line
    while IFS= read -r line; do
        (eval "$line") >out 2>&1 </dev/null || failed "$line: $(cat out)"
    done <block
}

# --- the tables ---

write_row() {
    if [[ $1 =~ ^\|\ \`([^\`]+)\`\ \|\ \`([^\`]*)\`\ \| ]]; then
        printf 'row([==[%s]==], [==[%s]==], function() return %s end)\n' \
            "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}" "${BASH_REMATCH[1]}" >>rows.lua
    fi
}

try_rows() {
    cat >check.lua <<'LUA'
function row(expression, claimed, f)
  local results = table.pack(f())
  for i = 1, results.n do
    results[i] = tostring(results[i])
  end
  local text = table.concat(results, ", ")
  if text ~= claimed then
    error(expression .. " gives " .. text .. ", not " .. claimed, 0)
  end
end
LUA
    tamrel -j 1 -n 0 hands.lua check.lua rows.lua >out 2>&1 || failed "$(cat out)"
    echo 'for name in pairs(C) do print(name) end os.exit(0)' >names.lua
    local name
    for name in $(tamrel -j 1 names.lua); do
        grep -q "[.: \`]$name(" "$document" || failed "the method $name is not shown"
    done
}

# --- the document ---

kind=
while IFS= read -r line; do
    case $kind:$line in
        ":\`\`\`"?*)
            kind=${line#\`\`\`}
            : >block
            ;;
        :*) write_row "$line" ;;
        *:\`\`\`)
            case $kind in
                lua | console | "console random" | sh) "try_${kind/ /_}" ;;
                *) failed "no test knows blocks of kind $kind" ;;
            esac
            kind=
            ;;
        *) printf '%s\n' "$line" >>block ;;
    esac
done <"$document"
[ ! -e rows.lua ] || try_rows

[ "$failures" -eq 0 ]
