"""Processes that do not outlive the tests."""

# Before a command: it is killed as soon as the tests are gone, whatever ended them.
ENDS_WITH_TESTS = ('setpriv', '--pdeathsig', 'KILL')
