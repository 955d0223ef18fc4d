"""The accessor series.jwnls, registered as soon as pandas is there."""

import importlib.abc
import importlib.util
import sys

from ._layout import cached_layout, option_words


class SeriesAccessor:
    """Reads and writes a Series: series.jwnls.read("pl_PL", "date")."""

    def __init__(self, series):
        self._series = series

    def read(self, locale, kind, options="", *, errors="raise", exact=None, **named):
        """A Series of the texts' values, as Layout.read_column() reads them.

        Integers are Int64, instants are aware, in UTC. With errors="report": (Series, Report).
        """
        layout = cached_layout(locale, kind, option_words(options, named))
        answer = layout.read_column(self._series, errors=errors, exact=exact)
        if errors != "report":
            return self._as_series(layout, answer)
        return self._as_series(layout, answer[0]), answer[1]

    def write(self, locale, kind, options="", *, errors="raise", **named):
        """A Series of the values' texts, as Layout.write_column() writes them."""
        layout = cached_layout(locale, kind, option_words(options, named))
        answer = layout.write_column(self._series, errors=errors)
        if errors != "report":
            return self._series_of(answer)
        return self._series_of(answer[0]), answer[1]

    def detect(self, kinds="", locales=""):
        """jwnls.detect() of the Series."""
        from ._detect import detect

        return detect(self._series, kinds, locales)

    def _series_of(self, values, dtype=None):
        import pandas

        return pandas.Series(values, index=self._series.index, name=self._series.name, dtype=dtype)

    def _as_series(self, layout, values):
        import numpy
        import pandas

        if layout.kind == "integer":
            mask = numpy.ma.getmaskarray(values)
            return self._series_of(pandas.arrays.IntegerArray(numpy.asarray(values), mask))
        series = self._series_of(values)
        return series.dt.tz_localize("UTC") if layout.kind == "instant" else series


def register():
    import pandas

    pandas.api.extensions.register_series_accessor("jwnls")(SeriesAccessor)


class _AfterPandas(importlib.abc.MetaPathFinder):
    """Registers when pandas is imported later; who never does does not wait for it."""

    def find_spec(self, name, path=None, target=None):
        if name != "pandas":
            return None
        sys.meta_path.remove(self)
        spec = importlib.util.find_spec(name)
        if spec is None or spec.loader is None:
            return spec
        execute = spec.loader.exec_module

        def execute_and_register(module):
            execute(module)
            register()

        spec.loader.exec_module = execute_and_register
        return spec


def register_when_imported():
    if "pandas" in sys.modules:
        register()
    else:
        sys.meta_path.insert(0, _AfterPandas())
