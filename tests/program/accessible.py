"""What a screen reader sees of the program, and does with it."""

import session


def program_on_bus():
    """The program on the accessibility bus, or nothing while it isn't there."""
    import pyatspi

    desktop = pyatspi.Registry.getDesktop(0)
    for i in range(desktop.childCount):
        child = desktop.getChildAtIndex(i)
        if child is not None and child.name == "kestrune":
            return child
    return None


def everything(node):
    """The node and all below it. What goes while it is being looked at is left out."""
    yield node
    try:
        children = [node.getChildAtIndex(i) for i in range(node.childCount)]
    except Exception:  # whatever the bus says of what is gone
        return
    for child in children:
        if child is not None:
            yield from everything(child)


def said(node):
    """What the node is called and what it is; nothing for what is gone."""
    try:
        return node.getRoleName(), node.name
    except Exception:  # as above
        return "", ""


class Reader:
    """Reads and presses what the program shows."""

    def __init__(self):
        self.application = session.wait_for("the program on the accessibility bus", program_on_bus)

    def everything(self):
        self.application.clear_cache()  # windows come and go
        return everything(self.application)

    def names(self):
        """What is read out, in the order in which it stands: the page, the sidebar, the menus, further windows."""
        return [name for _, name in map(said, self.everything()) if name]

    def find(self, role, name):
        return next((node for node in self.everything() if said(node) == (role, name)), None)

    def wait(self, name):
        return session.wait_for(name, lambda: name in self.names())

    def press(self, role, name):
        node = session.wait_for(f"the {role} {name}", lambda: self.find(role, name))
        actions = node.queryAction()
        wanted = [i for i in range(actions.nActions) if actions.getName(i).lower() in ("press", "toggle")]
        assert wanted, f"{name} can't be pressed"
        actions.doAction(wanted[0])
        return node

    def show(self, tab):
        """Goes to a page by its row in the sidebar."""
        self.press("list item", tab)
        session.wait_for(f"the window to be called {tab}", lambda: self.find("frame", tab))

    def is_checked(self, role, name):
        import pyatspi

        node = self.find(role, name)
        return node is not None and node.getState().contains(pyatspi.STATE_CHECKED)

    def after(self, name, nth=0):
        """What is read out right after the nth thing of that name."""
        names = self.names()
        places = [i for i, each in enumerate(names) if each == name]
        return names[places[nth] + 1] if nth < len(places) and places[nth] + 1 < len(names) else None
