"""Where the controls are in the plug-in's windows, as the interface files say."""

import xml.etree.ElementTree as ElementTree

from options import ROOT


class Interface:
    def __init__(self, name):
        window = ElementTree.parse(ROOT / "Mac" / "Resources" / f"{name}.xib").find("objects/window")
        self._parents = {child: parent for parent in window.iter() for child in parent}
        self._content = window.find("view[@key='contentView']")
        self.title = window.get("title")

    def place(self, control, height):
        """The middle of the control with this id, in pixels from the upper left corner of a window of this height."""
        views = self._way_out(self._content.find(f".//*[@id='{control}']"))
        _, _, width, own_height = self._frame(views[0])
        x = width / 2 + sum(self._frame(view)[0] for view in views)
        y = own_height / 2 + sum(self._bottom(view) for view in views)
        # The windows grow and shrink at their bottom; most controls stay where they are below the top.
        from_top = views[-1].find("autoresizingMask[@flexibleMinY='YES']") is not None
        return round(x), round((self._frame(self._content)[3] if from_top else height) - y)

    def _way_out(self, view):
        """The view and those that hold it, below the content."""
        views = []
        while view is not self._content:
            if self._frame(view):
                views.append(view)
            view = self._parents[view]
        return views

    def _bottom(self, view):
        """How far above the bottom of the view that holds it the view begins. A page counts from its top."""
        holder = self._parents[self._parents[view]]
        _, y, _, height = self._frame(view)
        return self._frame(holder)[3] - y - height if holder.get("customClass") == "OrvTagsPage" else y

    @staticmethod
    def _frame(view):
        rectangle = view.find("rect[@key='frame']")
        return rectangle is not None and [float(rectangle.get(name)) for name in ("x", "y", "width", "height")]
