-- Practice deals for weak two bids in the majors: South has a good six-card major, 6 to 10 points
-- and no four cards in the other major; North may have anything.

local function weakTwo(hand, major, other)
  return #hand(major) == 6 and #hand(other) < 4
    and hand:hcp_in_range(6, 10)
    and hand(major):hcp() >= 4
end

function filter()
  return weakTwo(S, "S", "H") or weakTwo(S, "H", "S")
end

function stats()
  remark("South opens 2", #S:S() == 6 and "S" or "H")
end

conf = { num = 4, format = "short" }
