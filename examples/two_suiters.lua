-- Michaels-like overcalls: West opens one spade with 11 to 21 points, North has hearts and a minor,
-- five cards or more in each, and not too few points.

local function fiveFive(spades, hearts, diamonds, clubs)
  return hearts >= 5 and (diamonds >= 5 or clubs >= 5)
end

function filter()
  return #W("S") >= 5 and W:hcp_in_range(11, 21)
    and N:shape(fiveFive) and N:hcp() >= 8
end

function stats()
  note("North:", N, "against", W("S"))
  count("North's points in the long suits", N("H"):hcp() + math.max(N("D"):hcp(), N("C"):hcp()))
end

conf = { num = 3, format = "NESW" }
