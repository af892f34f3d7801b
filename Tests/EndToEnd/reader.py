"""What a screen reader meets in the program, and does in it."""

from desktop import until


class Reader:
    """Reads the program of a desktop through its accessibility bus."""

    def __init__(self):
        # Both look for the bus as they are loaded: there must be a desktop by then.
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi, GLib
        import pyatspi
        self.pyatspi = pyatspi
        self.no_cache = Atspi.Cache.NONE
        self.gone = GLib.GError
        # A machine at work may take longer than the second that is usual.
        Atspi.set_timeout(20000, 20000)

    def windows(self):
        """The windows that are to be seen."""
        found = []
        for application in self.pyatspi.Registry.getDesktop(0):
            if application is not None and application.name == "Brindlewick":
                application.set_cache_mask(self.no_cache)
                found += [window for window in application if self.is_showing(window)]
        return found

    def is_showing(self, element):
        return element is not None and self.has(element, self.pyatspi.STATE_SHOWING)

    @staticmethod
    def has(element, state):
        return element.getState().contains(state)

    def window(self, role, name):
        """Waits for a window."""
        return until(f'the {role} "{name}" is open', lambda: self.first(self.windows, role, name))

    def is_open(self, role, name):
        return self.first(self.windows, role, name) is not None

    def first(self, elements, role, name):
        """The first of these that can be seen; absent where there is none, or where it goes away meanwhile."""
        try:
            for element in elements():
                if element.getRoleName() == role and (name is None or element.name == name):
                    return element
        except self.gone:
            pass
        return None

    def elements(self, within):
        """All that can be seen in it, in reading order."""
        for child in within:
            if self.is_showing(child):
                yield child
                yield from self.elements(child)

    def find(self, within, role, name=None):
        """Waits for an element."""
        return until(f'there is the {role} "{name}"', lambda: self.first(lambda: self.elements(within), role, name))

    def texts(self, within):
        """The names of all that can be seen in it and has one; nothing where it has gone."""
        try:
            return [element.name for element in self.elements(within) if element.name]
        except self.gone:
            return []

    def wait_for_text(self, within, text):
        """Waits for an element with that name, whatever it is."""
        try:
            until(f'"{text}" is read', lambda: text in self.texts(within))
        except AssertionError as error:
            raise AssertionError(f"{error}, but {self.texts(within)}") from None

    def press(self, within, name, role="push button"):
        """Presses a button as a screen reader does, once it is there and can be pressed."""
        button = self.find(within, role, name)
        until(f'"{name}" can be pressed', lambda: self.has(button, self.pyatspi.STATE_ENABLED))
        action = button.queryAction()
        names = [action.getName(index) for index in range(action.nActions)]
        wanted = next(word for word in ("Press", "Toggle") if word in names)
        assert action.doAction(names.index(wanted)), f'"{name}" cannot be pressed'

    @staticmethod
    def box(element):
        """Left, top, width and height on the screen."""
        extents = element.queryComponent().getExtents(0)
        return extents.x, extents.y, extents.width, extents.height
