"""Does in the windows of the stand-in host what a person would, with the mouse, and saves a picture of each."""

import signal

from interface import Interface

LOGIN = Interface("OrvaneUI")
UPLOAD = Interface("OrvaneUploadWindowController")
STATUS = Interface("UploadStatusWindowController")
COMPLETE = Interface("UploadCompleteWindowController")
NOT_UPLOADED = "Orvane: Not Uploaded"
HOST = "Orvane Host"

TITLE = "Größe & Schnitt für Müller"
DESCRIPTION = ["Erste Fassung für Zürich, mit Musik & Ton (neu).", "Bitte bis Freitag ansehen."]
TAGS = ["Müller", "Rohschnitt", "25 fps"]
UNWANTED_TAG = "nicht dieser"

# Heights in the menus. The host's menu is in its window, below the title.
MENU_BAR, MENU_ROW, POP_UP_ROW = 26, 24, 26


class Driver:
    def __init__(self, screen, service, variant):
        self.screen, self.service, self.variant = screen, service, variant

    def drive(self):
        # A keyboard that has the letters which are typed. It is that of the demo's own display.
        self.screen.run("setxkbmap", "de")
        self.choose_export()
        if self.variant == "preset":
            self.expect_alert("no-preset", "Critical")
        else:
            self.log_in()
            self.set_up_upload()
            self.watch()
        self.screen.expect(HOST)
        self.screen.expect_picture("host-after")
        self.screen.run("wmctrl", "-c", HOST)
        self.screen.expect_gone(HOST)

    def choose_export(self):
        print("  choosing File > Export > Orvane")
        self.screen.expect(HOST)
        self.screen.expect_picture("host")
        bar, row = MENU_BAR // 2, MENU_BAR // 2 + MENU_ROW
        self.screen.choose("host-menu", (110, bar), (120, row), (200, row))

    def log_in(self):
        self.screen.expect(LOGIN.title)
        password = self.service.password
        self.refuse_input(LOGIN, "login", "no-subdomain")
        if self.variant == "login":
            print("  logging in at a wrong subdomain, then with a wrong password")
            self.fill_login("nowhere", password)
            self.refuse(LOGIN, "login", "wrong-subdomain")
            self.fill_login("acme", "not-" + password)
            self.refuse(LOGIN, "login", "wrong-password")
        print("  logging in")
        self.fill_login("acme", password)
        self.click(LOGIN, "remember")
        self.leave(LOGIN.title, "login", lambda: self.click(LOGIN, "login"))

    def fill_login(self, subdomain, password):
        # Whoever comes to a field by Tab types over what stands there.
        self.click(LOGIN, "username")
        self.screen.press("shift+Tab")
        self.type([subdomain, "editor", password], "Tab")

    def set_up_upload(self):
        self.screen.expect(UPLOAD.title)
        self.refuse_input(UPLOAD, "upload", "no-title")
        self.click(UPLOAD, "title")
        self.screen.type(TITLE)
        self.refuse_input(UPLOAD, "upload", "no-project")
        print("  choosing project and folder")
        self.pick("project", 1, "upload-projects")
        self.refuse_input(UPLOAD, "upload", "no-folder")
        self.pick("folder", 2, "upload-folders")
        print("  typing a description and tags")
        self.click(UPLOAD, "description")
        self.type(DESCRIPTION, "Return")
        for tag in TAGS:
            self.click(UPLOAD, "tagField")
            self.screen.type(tag)
            self.screen.press("Return")
        self.leave(UPLOAD.title, "upload", lambda: self.click(UPLOAD, "upload"))

    def watch(self):
        if self.variant in ("render", "cancel"):
            self.expect_alert("render-failed")
            return
        print("  the host renders")
        # Uploading within one machine takes no time, so the service waits until the window's picture is taken.
        self.service.send(signal.SIGSTOP)
        self.screen.expect("Rendering", busy=True)
        self.screen.picture("rendering")
        self.screen.expect_gone("Rendering", 600)
        print("  uploading")
        self.screen.expect(STATUS.title)
        self.screen.expect_picture("uploading")
        self.service.send(signal.SIGCONT)
        if self.variant == "upload":
            self.try_again()
            return
        self.screen.expect(COMPLETE.title, 300)
        print("  opening the film's page")
        self.leave(COMPLETE.title, "complete", self.open_page)

    def try_again(self):
        self.expect_alert("upload-refused")
        self.screen.expect(NOT_UPLOADED)
        self.screen.expect_picture("not-uploaded")
        print("  trying again, which is refused as well")
        self.click(STATUS, "tryAgain")
        self.expect_alert("upload-refused")
        self.screen.expect(NOT_UPLOADED)

    def open_page(self):
        self.click(COMPLETE, "open")

    def click(self, interface, control):
        self.screen.click(*interface.place(control, self.screen.height))

    def pick(self, control, rows, picture):
        """Opens the pop-up button and picks the item so many rows below the one that is chosen."""
        x, y = UPLOAD.place(control, self.screen.height)
        self.screen.choose(picture, (x, y), (x, y + rows * POP_UP_ROW))

    def type(self, texts, key):
        """Types the texts with the key between them."""
        for number, text in enumerate(texts):
            if number:
                self.screen.press(key)
            self.screen.type(text)

    def leave(self, title, picture, act):
        """Takes a picture of the window, then does what closes it."""
        self.screen.expect(title)
        self.screen.expect_picture(picture)
        act()
        self.screen.expect_gone(title)

    def refuse(self, interface, button, alert):
        """Presses a button that is answered with an alert, after which the window is there again."""
        self.click(interface, button)
        self.expect_alert(alert)
        self.screen.expect(interface.title)

    def refuse_input(self, *refusal):
        if self.variant == "input":
            self.refuse(*refusal)

    def expect_alert(self, name, title="Alert"):
        self.screen.expect(title)
        print(f"  an alert: {name}")
        self.screen.expect_picture(f"alert-{name}")
        self.screen.press("Return")
        self.screen.expect_gone(title)
