"""What a screen reader sees of the program, and does with it."""

import session


def program_on_bus():
    """The program on the accessibility bus; None while it isn't there."""
    import pyatspi

    desktop = pyatspi.Registry.getDesktop(0)
    children = (desktop.getChildAtIndex(i) for i in range(desktop.childCount))
    return next((child for child in children if child is not None and child.name == "kestrune"), None)


def everything(node):
    """The node and all its descendants, except those that disappear meanwhile."""
    yield node
    try:
        children = [node.getChildAtIndex(i) for i in range(node.childCount)]
    except Exception:  # any error of the bus means that the node is gone
        return
    for child in children:
        if child is not None:
            yield from everything(child)


def described(node):
    """Role and name of the node; both empty if it is gone."""
    try:
        return node.getRoleName(), node.name
    except Exception:  # as above
        return "", ""


def is_in_state(node, state):
    import pyatspi

    return node is not None and node.getState().contains(getattr(pyatspi, "STATE_" + state))


class Reader:
    """Reads and presses what the program shows."""

    def __init__(self):
        self.application = session.wait_for("the program on the accessibility bus", program_on_bus)

    def everything(self):
        self.application.clear_cache()  # windows open and close
        return everything(self.application)

    def names(self):
        """Names in reading order: the page, the sidebar, the menus, further windows."""
        return [name for _, name in map(described, self.everything()) if name]

    def named(self, role):
        """Names of everything with that role."""
        return [name for each, name in map(described, self.everything()) if each == role]

    def find(self, role, name):
        return next((node for node in self.everything() if described(node) == (role, name)), None)

    def wait(self, name):
        return session.wait_for(name, lambda: name in self.names())

    def wait_gone(self, name):
        return session.wait_for(f"{name} to disappear", lambda: name not in self.names())

    def press(self, role, name):
        node = session.wait_for(f"the {role} {name}", lambda: self.find(role, name))
        actions = node.queryAction()
        wanted = [i for i in range(actions.nActions) if actions.getName(i).lower() in ("press", "toggle")]
        assert wanted, f"{name} can't be pressed"
        actions.doAction(wanted[0])

    def choose(self, button, item):
        """Opens the menu of the button and chooses an item."""
        self.press("push button", button)
        self.press("menu item", item)

    def show(self, page):
        """Goes to a page by its row in the sidebar."""
        self.press("list item", page)
        session.wait_for(f"the window to be called {page}", lambda: self.find("frame", page))

    def is_checked(self, role, name):
        return is_in_state(self.find(role, name), "CHECKED")

    def after(self, name):
        """What is read right after the first thing of that name."""
        names = self.names()
        return names[names.index(name) + 1] if name in names[:-1] else None
