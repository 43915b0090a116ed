"""The demo by keyboard alone, from the log-in to the page of the film: every control is reached with Tab, in the order
in which one reads."""

from driver import DESCRIPTION, LOGIN, TAGS, TITLE, UNWANTED_TAG, UPLOAD, Driver


class KeyboardDriver(Driver):
    def log_in(self):
        self.screen.expect(LOGIN.title)
        print("  logging in by keyboard")
        # Return presses the default button, and dismisses the alert.
        self.screen.press("Return")
        self.expect_alert("no-subdomain")
        self.screen.expect(LOGIN.title)
        self.type(["acme", "editor", self.service.password], "Tab")
        self.screen.press("Tab", "space")
        self.leave(LOGIN.title, "login", lambda: self.screen.press("Return"))

    def set_up_upload(self):
        self.screen.expect(UPLOAD.title)
        print("  choosing project and folder by keyboard")
        self.choose("upload-projects", "Down", "Down", "Up")
        # Escape leaves the menu, not the window.
        self.screen.press("Tab")
        self.screen.open_menu(lambda: self.screen.press("Down"))
        self.screen.press("Down")
        self.screen.close_menu(lambda: self.screen.press("Escape"))
        self.screen.expect(UPLOAD.title)
        self.choose("upload-folders", "Down", "Down")
        self.screen.press("Tab")
        self.screen.type(TITLE)
        self.screen.press("Tab")
        print("  typing a description and tags by keyboard")
        self.type(DESCRIPTION, "Return")
        self.screen.press("Tab")
        self.type([TAGS[0], UNWANTED_TAG, *TAGS[1:]], "Return")
        # Past the Add button to the second chip, whose tag goes. Then the third one is in its place.
        self.screen.press("Return", "Tab", "Tab", "Tab", "space")
        # Past the chips, back from Log Out and on to it again, past Cancel to Upload.
        keys = ["Tab", "Tab", "shift+Tab", "Tab", "Tab", "Tab", "space"]
        self.leave(UPLOAD.title, "upload", lambda: self.screen.press(*keys))

    def open_page(self):
        self.screen.press("Return")

    def choose(self, picture, *keys):
        """Opens the menu of the pop-up button that has the keyboard, walks it with these keys and takes the item."""
        self.screen.open_menu(lambda: self.screen.press("Down"))
        self.screen.press(*keys)
        self.screen.expect_still("the menu")
        self.screen.expect_picture(picture)
        self.screen.close_menu(lambda: self.screen.press("Return"))
        # The keyboard comes back to the window.
        self.screen.expect(UPLOAD.title)
