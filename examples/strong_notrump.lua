-- South opens a strong no trump: 15 to 17 points and a balanced hand.

function filter()
  return S:nt(15, 17)
end

function stats()
  note("South", S:hcp(), "points, North", N:hcp())
end
