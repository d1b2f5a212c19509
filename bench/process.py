"""What the kernel tells about a running process."""

import os
import statistics
import time


def _wake_ups_of_threads(pid):
    counts = {}
    for thread in os.listdir(f'/proc/{pid}/task'):
        with open(f'/proc/{pid}/task/{thread}/status', encoding='ascii') as file:
            counts[thread] = next(int(line.split()[1]) for line in file if line.startswith('voluntary_ctxt_switches'))
    return counts


def wake_ups(pid, seconds):
    """How often the process is woken up in each of the next seconds, all its threads together."""
    counts = []
    before = _wake_ups_of_threads(pid)
    begin = time.monotonic()
    for second in range(seconds):
        time.sleep(max(0.0, begin + second + 1 - time.monotonic()))
        now = _wake_ups_of_threads(pid)
        # A thread that has ended takes its count with it.
        counts.append(sum(count - before.get(thread, 0) for thread, count in now.items()))
        before = now
    return counts


def megabytes(pid):
    """Resident memory, and the share of it that is the process's own when what is shared is divided by its users."""
    with open(f'/proc/{pid}/smaps_rollup', encoding='ascii') as file:
        sizes = {line.split()[0]: int(line.split()[1]) / 1024 for line in file if line.endswith('kB\n')}
    return sizes['Rss:'], sizes['Pss:']


def processor_milliseconds(pid):
    """The processor time that the process has taken so far."""
    with open(f'/proc/{pid}/stat', encoding='utf-8') as file:
        fields = file.read().rsplit(')', 1)[1].split()
    return (int(fields[11]) + int(fields[12])) * 1000 / os.sysconf('SC_CLK_TCK')


def median(values):
    return statistics.median(values) if values else float('nan')
