-- A lead problem: South plays three no trump after 1NT - 3NT, West is to lead from K J 8 5 3 of hearts
-- and three small spades. The fourth-best heart or a spade?

conf = { W = "974.KJ853.62.T84", num = 200, format = "none" }

function filter()
  return S:nt(15, 17) and N:hcp_in_range(10, 15) and N:semiBalanced()
    and #N:S() < 4 and #N:H() < 4
end

function stats()
  -- The third argument plays cards before the question is asked: here West's lead.
  local heart, spade = tricks("S", "N", "H5"), tricks("S", "N", "S9")
  count("declarer's tricks after a heart", heart)
  count("declarer's tricks after a spade", spade)
  count("the heart beats 3NT", heart < 9)
  count("the spade beats 3NT", spade < 9)
  count("the heart is better", heart < spade)
  count("the spade is better", spade < heart)
end
