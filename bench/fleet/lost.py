"""Which jobs were lost or late, as the scheduler's log has it and as the printers have it."""
LATE = 60  # seconds: by then the next job of the queue is due


def seconds_to_level(asks, log):
    """Of the asks whose printers were on: how long each took until its level was in."""
    return sorted(log.completed[ask.job] - ask.sent for ask in asks
                  if ask.printer_was_on and ask.job in log.completed)


def late(asks, log):
    """How many of these took longer than a minute."""
    return sum(seconds > LATE for seconds in seconds_to_level(asks, log))


def lost_in_log(asks, log):
    """The asks that did not end well."""
    return [f"job {ask.job}: {log.failed.get(ask.job, 'has not ended')}" for ask in asks
            if ask.job not in log.completed]


def lost_at_printers(fleet, minutes, asked_before):
    """The printers that were asked, or printed, otherwise than jobs were sent there."""
    sent = [0] * len(fleet.names)
    for ask in minutes.asks:
        sent[ask.queue] += 1
    faults = []
    for number, (name, printer) in enumerate(zip(fleet.names, fleet.printers.all)):
        asked = printer.asked - asked_before[number]
        if asked != sent[number]:
            faults.append(f"{name} was sent {sent[number]} command jobs, its printer heard {asked}")
        if printer.printed != minutes.photos[number]:
            faults.append(f"{name} was sent {minutes.photos[number]} photos, its printer made "
                          f"{printer.printed}")
    return faults
