# Compares the game servers' journals with what must have become of each player.
#   awk -f check.awk expected.txt PROFILE.journal...
# Prints a table and ends non-zero when one line of it is wrong. (Asking for an element makes it, so that every
# question is whether the key is in the array.)

FILENAME ~ /expected/ {
  if ($0 ~ /^#/ || $0 == "") next
  split($0, field, "|")
  key = field[1] "|" field[2]
  order[++count] = key
  wanted[key] = field[3]
  why[key] = field[4]
  next
}

{
  profile = FILENAME
  sub(/.*\//, "", profile)
  sub(/\.journal$/, "", profile)
  split($0, field, "\t")
  name = field[4]
  gsub(/^ +| +$/, "", name)
  if (name == "" && field[4] != "") name = "(nameless)"
  key = profile "|" name
  kind = field[2]
  if (kind == "join") joined[key] = field[1]
  else if (kind == "refused") refused[key] = field[6]
  else if (kind == "leave") { left[key] = 1; after[key] = field[6] }
  else if (kind == "dropped") {
    after[key] = field[6]; sub(/ .*/, "", after[key])
    by[key] = field[6]; sub(/^[0-9]+ /, "", by[key])
  }
  else if (kind == "killed") killed[key]++
  else if (kind == "disarmed") disarmed[key]++
  else if (kind == "switched") { switched[key] = field[6]; moment[key] = field[1] - joined[key] }
}

function verdict(key, is) {
  is = wanted[key]
  if (is == "punted") return (key in by) && by[key] ~ /^punt [0-9][0-9]$/
  if (is == "filtered") return (key in by) && by[key] == "filtered"
  if (is == "refused") return (key in refused) && refused[key] == "filtered"
  if (is == "leaves") return (key in left)
  if (!(key in joined) || (key in by) || (key in left)) return 0
  if (is == "killed") return (key in killed) && killed[key] >= 2
  if (is == "disarmed") return (key in disarmed)
  if (is == "switched") return (key in switched)
  return is == "stays" && !(key in killed) && !(key in disarmed)
}

function happened(key) {
  if (key in by) return "dropped by \"" by[key] "\" after " after[key] " ms"
  if (key in refused) return "refused: " refused[key]
  if (key in left) return "left after " after[key] " ms"
  if (!(key in joined)) return "never came"
  if (key in killed) return "killed " killed[key] " times, still there"
  if (key in disarmed) return "disarmed, still there"
  if (key in switched) return "team " switched[key] " after " moment[key] " ms, still there"
  return "still there"
}

END {
  printf "%-4s %-10s %-18s %-36s %s\n", "", "profile", "player", "what happened", "because"
  for (i = 1; i <= count; i++) {
    key = order[i]
    split(key, part, "|")
    ok = verdict(key)
    if (!ok) wrong++
    printf "%-4s %-10s %-18s %-36s %s\n", ok ? "ok" : "BAD", part[1], part[2], happened(key), why[key]
  }
  printf "%d of %d as it must be\n", count - wrong, count
  exit wrong > 0
}
