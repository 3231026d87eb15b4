-- Which patterns South's hand has, longest suit first, over ten thousand deals.

function stats()
  local pattern = table.concat({ S:pattern() }, "-")
  count(pattern, true)
end

-- A counter exists only where it was counted, so the share of a pattern is its sum
-- divided by the number of deals.
conf = { num = 10000, format = "none" }
