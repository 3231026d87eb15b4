-- Three no trump or four spades? South has a balanced 15 to 17, North a balanced hand with four spades
-- opposite four, and enough for game. Both games are looked at on the same deals.

conf = { num = 200, format = "none" }

function filter()
  return S:nt(15, 17) and N:nt(9, 14) and #S:S() == 4 and #N:S() == 4
end

function stats()
  local notrump, spades = tricks("S", "N"), tricks("S", "S")
  count("tricks in no trump", notrump)
  count("tricks in spades", spades)
  count("3NT makes", notrump >= 9)
  count("4S makes", spades >= 10)
  count("only 3NT makes", notrump >= 9 and spades < 10)
  count("only 4S makes", spades >= 10 and notrump < 9)
end
