-- What is it worth to bid a thin game? The score of four spades against that of two spades, both
-- vulnerable, over the deals of an invitation that might be accepted or not.

local trickValue = { C = 20, D = 20, H = 30, S = 30, N = 30 }

-- The score of declarer's side, not doubled; no slam bonus is needed here.
local function score(level, trump, made, vulnerable)
  local overtricks = made - level - 6
  if overtricks < 0 then
    return overtricks * (vulnerable and 100 or 50)
  end
  local contract = level * trickValue[trump] + (trump == "N" and 10 or 0)
  local bonus = contract >= 100 and (vulnerable and 500 or 300) or 50
  return contract + bonus + overtricks * trickValue[trump]
end

conf = { num = 200, format = "none" }

function filter()
  return #S:S() == 5 and S:hcp_in_range(12, 14) and #N:S() == 3 and N:hcp_in_range(10, 11)
    and S:semiBalanced() and N:semiBalanced()
end

function stats()
  local made = tricks("S", "S")
  count("tricks in spades", made)
  count("score of 4S", score(4, "S", made, true))
  count("score of 2S", score(2, "S", made, true))
end
