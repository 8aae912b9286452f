"""Minutes of the fleet, with somebody else's comparison after each."""
import chance
import minutes
import oracle
import printers

MINUTE = 60


def play(fleet, count, seed, seconds=MINUTE):
    """Returns the minutes, of so many seconds each, and what was wrong."""
    weather = chance.Chance(fleet.printers, seed)
    reader = oracle.Oracle(fleet.printers, fleet.names, printers.TOTAL)
    played = minutes.Minutes(fleet, seconds)
    wrong = []
    for minute in range(1, count + 1):
        played.play(weather.new_minute(printers.TOTAL))
        wrong += reader.compare(f"minute {minute}", played.blind)
    weather.all_on()
    played.end()
    return played, wrong + reader.compare("the end", played.blind)
