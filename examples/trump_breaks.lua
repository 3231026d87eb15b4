-- How nine trumps between two known hands break, and how often the queen falls.
-- North has A K J T 9 and South 8 7 6 5. Fixing these cards does not keep further spades out of the
-- two hands, so the filter does.

conf = { N = "SAKJT9", S = "S8765", num = 20000, format = "none" }

local queen = C.new("SQ")

function filter()
  return #N:S() == 5 and #S:S() == 4
end

function stats()
  local east = #E:S()
  count("breaks 2-2", east == 2)
  count("breaks 3-1", east == 1 or east == 3)
  count("breaks 4-0", east == 0 or east == 4)
  -- `queen <= E`: the queen is among East's cards
  count("queen falls in two rounds", queen <= E and east <= 2 or queen <= W and #W:S() <= 2)
end
