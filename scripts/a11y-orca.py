#!/usr/bin/python3
# Starts Orca (/usr/bin/orca, with the arguments given) so that its debug file is written line by
# line: Orca opens it with Python's default buffer, and the last utterances would stay in the
# buffer until several kilobytes more came.
import builtins
import runpy
import sys

_open = builtins.open


def line_buffered_open(file, mode="r", *args, **kwargs):
    if "w" in mode and isinstance(file, str) and "--debug-file" in sys.argv \
            and file == sys.argv[sys.argv.index("--debug-file") + 1]:
        kwargs["buffering"] = 1
        args = args[1:]
    return _open(file, mode, *args, **kwargs)


builtins.open = line_buffered_open
sys.argv = ["/usr/bin/orca"] + sys.argv[1:]
runpy.run_path("/usr/bin/orca", run_name="__main__")
