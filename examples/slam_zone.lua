-- Deals for slam practice: North and South hold 33 points or more, or 28 with a ten-card fit.
-- Written as PBN, for a program that reads it:  tamrel -n 20 -s -r examples/slam_zone.lua

local function longestFit()
  local both = N + S
  return math.max(both:shape())
end

function filter()
  local points = N:hcp() + S:hcp()
  return points >= 33 or points >= 28 and longestFit() >= 10
end

function stats()
  count("points", N:hcp() + S:hcp())
  count("controls", N:controls() + S:controls())
end

conf = function()
  return { format = "PBN" }
end
