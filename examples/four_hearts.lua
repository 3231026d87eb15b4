-- How often does four hearts make opposite this hand?
-- South is fixed; North raises with three or four hearts and 6 to 9 points.

conf = { S = "A5.AKJ84.K73.Q62", num = 200, format = "none" }

function filter()
  local hearts = #N("H")
  return (hearts == 3 or hearts == 4) and N:hcp_in_range(6, 9)
end

function stats()
  local made = tricks("S", "H")
  count("tricks in hearts", made)
  count("4H makes", made >= 10)
end
