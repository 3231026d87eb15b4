#!/usr/bin/env bash
# Asks the finished program for results that another solver found: every declarer and denomination of
# whole deals, and positions in mid-play that are reached by commands.
#
#   solved_deals.sh PROGRAM SOURCE_ROOT NUMBER
#
# NUMBER is how many whole deals, and how many deals with positions, are asked for.
set -uo pipefail

number=$3
# shellcheck source=tests/support/own_folder.sh
source "$(dirname "$0")/../support/own_folder.sh"
data=$root/tests/data

# Runs script.lua on the deal "N:north east south west"; it raises an error for a wrong result.
ask() {
    local north east south west
    read -r north east south west <<<"${1#N:}"
    "$program" -j 1 -n 1 -f none -N "$north" -E "$east" -S "$south" -W "$west" script.lua >out 2>&1 || {
        cat out
        return 1
    }
}

cat >expect.lua <<'EOF'
local function expect(expected, declarer, trump, commands)
  local what = table.concat({ declarer, trump, commands }, " ")
  local found = tricks(declarer, trump, commands or "")
  assert(found == expected, what .. ": " .. tostring(found) .. " for " .. expected)
  for n = -1, 14 do
    assert(cantake(n, declarer, trump, commands or "") == (n <= expected), what .. ", " .. n)
  end
end
EOF

failures=0
deals=0
while read -r north east south west results; do
    {
        cat expect.lua
        echo 'function stats()'
        # shellcheck disable=SC2086
        set -- $results
        for trump in S H D C N; do
            for declarer in N E S W; do
                echo "  expect($1, '$declarer', '$trump')"
                shift
            done
        done
        echo 'end'
    } >script.lua
    ask "$north $east $south $west" || failures=$((failures + 1))
    deals=$((deals + 1))
done < <(head -n "$number" "$data/tables.txt")

positions=0
while read -r deal; do
    {
        cat expect.lua
        echo 'function stats()'
        grep -F "$deal|" "$data/positions.txt" |
            awk -F'|' '{ printf "  expect(%s, \"%s\", \"%s\", \"%s\")\n", $5, $2, $3, $4 }'
        echo 'end'
    } >script.lua
    ask "$deal" || failures=$((failures + 1))
    positions=$((positions + $(grep -c '  expect(' script.lua)))
done < <(cut -d'|' -f1 "$data/positions.txt" | uniq | head -n "$number")

echo "$deals whole deals and $positions positions asked, $failures deals with a wrong answer"
[ "$failures" -eq 0 ] && [ "$deals" -gt 0 ] && [ "$positions" -gt 0 ]
