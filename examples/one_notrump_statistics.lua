-- What faces a strong no trump: the points of North, and how often the two hands
-- hold the 25 points that a game usually needs.

function filter()
  return S:nt(15, 17)
end

function stats()
  local points = N:hcp()
  count("points of North", points)
  count("points together", points + S:hcp())
  count("25 or more together", points + S:hcp() >= 25)
  count("spades together", #(N + S):S())
end
