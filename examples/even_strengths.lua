-- An even mix of weak and strong hands. Weak and middling hands are far more frequent than strong
-- ones, so each deal is kept with a probability that makes up for it: a number as the result of
-- `filter` is the chance that the deal is kept.

local chance = {}  -- by the points of South
local rarest = 20
local frequency = {  -- per mille, from the distribution of high-card points
  [0] = 3.6, 7.9, 13.6, 24.6, 38.5, 51.9, 65.5, 80.3, 88.9, 93.6, 94.1, 89.4, 80.3, 69.1, 56.9,
  44.2, 33.1, 23.6, 16.1, 10.4, 6.4,
}
for points = 0, rarest do
  chance[points] = 3.6 / frequency[points]
end

function filter()
  return chance[S:hcp()] or 1
end

function stats()
  count("South has 0 to 6", S:hcp() <= 6)
  count("South has 7 to 13", S:hcp() >= 7 and S:hcp() <= 13)
  count("South has 14 or more", S:hcp() >= 14)
end

conf = { num = 5000, format = "none" }
