"""The table: what goes wrong, and what must come of it. A row more is a line more."""

import json
from dataclasses import dataclass, field

from service import GOOD, LINK, success

MIB = 1 << 20
INSTALLER = "https://www.orvane.localhost:48443/downloads/vorrel-premiere/orvane-vorrel-APP.dmg"
LOGIN = json.dumps({"orvaneSubdomain": "acme", "un": "editor", "p": "let-me-in"})


@dataclass
class Row:
    name: str
    expect: dict                                    # facts and what they must be: a value or a predicate
    behaviours: dict = field(default_factory=dict)  # of the service, by request
    wish: dict = field(default_factory=dict)        # see Person.h and faulty_export.mm
    saved: str = LOGIN                              # what the keyring holds at the start; None for nothing
    setting: str = ""                               # what is wrong with the machine
    certificate: str = "good"
    limit: float = 30                               # seconds
    everyday: bool = False
    then: "Row" = None                              # what follows, with the same keyring and temporary folder


# What must come of it.

def alerts(*parts):
    return lambda seen: len(seen) == len(parts) and all(part in text for part, text in zip(parts, seen))


def event(kind, part):
    """One event of that kind that says this and more."""
    return lambda seen: len(seen) == 1 and seen[0][0] == kind and part in seen[0][1][:-8]


# What is so unless a row says otherwise.
ALWAYS = {"ended": 0, "growth": lambda mib: mib <= 512, "modal": False, "at the root": 0, "answers": [0], "alerts": [],
          "events": [], "windows": [], "facades": 0, "films": 0, "saved": True}
UPLOADED = {"stored": bool}
NOT_UPLOADED = {"alerts": alerts("There was an error uploading to Orvane."), "windows": ["Orvane: Not Uploaded"],
                "facades": 1}
KEPT = {**NOT_UPLOADED, "films": 1, "progress": lambda text: "VorrelExport_" in text, "another try": True}
NO_PROJECT = {"alerts": alerts("You must select a project.")}
NO_FOLDER = {"alerts": alerts("You must select a folder.")}
NOT_REACHED = {"alerts": alerts("Could not connect to the Orvane server."), "saved": False}
SAVED_IS_BAD = "The saved Orvane username and/or password is invalid."
# A log-in's answer of more than a megabyte holds no token: it counts as a refusal.
TOO_LONG = {**NOT_REACHED, "alerts": alerts(SAVED_IS_BAD, "Invalid username or password.")}
BROKEN = {"answers": [-1], "events": event(3, "The export to Orvane was stopped: ")}
# It ends, within its limits: nothing more is laid down.
UNTOLD = dict.fromkeys(("answers", "alerts", "events", "windows", "facades", "films", "saved"), lambda seen: True)
UNSAVED = {**UPLOADED, "saved": False}

# What comes of an answer that is lost on the way, and of one that cannot be read.
REQUESTS = {
    "key": (NOT_REACHED, BROKEN), "token": (NOT_REACHED, BROKEN), "projects": (NO_PROJECT, NO_PROJECT),
    "top": (NO_FOLDER, NO_FOLDER), "folders": (UPLOADED, UPLOADED), "upload": (KEPT, KEPT),
    "version": (UNSAVED, UNSAVED),
}


# How an answer goes wrong. Each is a function of the request's kind that gives a behaviour.

def says(body, status=200, headers=()):
    return lambda kind: lambda exchange: exchange.answer(body, status, headers)


def sends(*pieces):
    """Sends what is no proper answer, and closes."""
    def behave(exchange):
        for piece in pieces:
            exchange.send(piece)
        exchange.close()
    return lambda kind: behave


def endless(head, piece, limit=1024 * MIB):
    def behave(exchange):
        exchange.send(head)
        for _ in range(limit // len(piece)):
            exchange.send(piece)
        exchange.server.ending.wait(60)
    return lambda kind: behave


def late(seconds):
    def of(kind):
        def behave(exchange):
            exchange.server.ending.wait(seconds)
            exchange.answer(GOOD[kind])
        return behave
    return of


def after_the_interruption(exchange):
    """What the person does meanwhile happens while the upload runs, however long that takes."""
    while not exchange.server.interrupted.exists() and not exchange.server.ending.wait(0.02):
        pass
    exchange.answer(GOOD["upload"])


def drips(kind):
    def behave(exchange):
        body = GOOD[kind].encode() if kind == "upload" else b" " * 3600
        exchange.send(b"HTTP/1.1 200 X\r\nContent-Length: %d\r\n\r\n" % len(body))
        for start in range(0, len(body), 2):
            if exchange.server.ending.wait(1):
                return
            exchange.send(body[start:start + 2])
    return behave


def padded(size, piece=b" "):
    return lambda kind: lambda exchange: exchange.answer(GOOD[kind].encode() + piece * (size // len(piece)))


def stuffed(member):
    """The good answer with one more member in its object."""
    return lambda kind: lambda exchange: exchange.answer(
        '{"root":' + member + "}" if kind == "version" else '{"more":' + member + "," + GOOD[kind][1:])


def redirects(location, status=302):
    return lambda kind: lambda exchange: exchange.answer("", status, [f"Location: {location.format(kind=kind)}"])


def loops(kind):
    """Until the library has had enough of headers. An upload is sent anew each time, so it is closed sooner."""
    def behave(exchange):
        if kind == "upload" and len(exchange.server.asked) > 100:
            exchange.close()
        else:
            exchange.answer("", 307, [f"Location: {exchange.path}"])
    return behave


NESTED = "[" * 50_000 + "]" * 50_000
HEAD = b"HTTP/1.1 200 X\r\n"
LOST = {
    "closes at once": sends(),
    "resets the connection": lambda kind: lambda exchange: exchange.close(reset=True),
    "sends half an answer": sends(HEAD + b"Content-Length: 1000\r\n\r\n{\"root\":"),
    "does not speak HTTP": sends(b"\0\xff\x80 220 ready\r\n" * 9),
    "answers 40 MiB": padded(40 * MIB),
    "answers without end": endless(HEAD + b"\r\n", b" " * MIB),
    "sends headers without end": endless(HEAD, b"X-More: " + b"x" * 1000 + b"\r\n", 64 * MIB),
    "redirects to file:": redirects("file:///etc/passwd"),
    "redirects to a host without a certificate": redirects("https://elsewhere.localhost/moved/{kind}", 307),
}
UNREADABLE = {
    "answers nothing": says(""),
    "answers a web page": says("<html>Welcome</html>"),
    "answers an error page": says("<h1>Bad gateway</h1>", 502),
    "answers half a JSON text": says('{"root":{"status":"success","payload":[{"id":"1"'),
    "answers bytes that are no text": says(bytes(range(256))),
    "answers a list": says('[["root"]]'),
    "answers null": says('{"root":null}'),
    "answers other types": says('{"root":{"status":[1],"payload":true,"auth_key":{}}}'),
    "answers nested 50,000 deep": stuffed(NESTED),
    "answers 1.1 million values": stuffed("[" + "1," * 1_100_000 + "1]"),
}
STILL_GOOD = {
    "answers twice": lambda kind: lambda exchange: (exchange.answer(GOOD[kind]), exchange.answer(GOOD[kind])),
    "answers in pieces": lambda kind: lambda exchange: exchange.send(
        HEAD + b"Transfer-Encoding: chunked\r\n\r\n" + b"".join(b"1\r\n%c\r\n" % byte for byte in GOOD[kind].encode())
        + b"0\r\n\r\n"),
    "redirects within the host": redirects("/moved/{kind}", 307),
    "redirects to the host's other name": redirects("https://www.orvane.localhost/moved/{kind}", 308),
    "redirects from POST to GET": redirects("/moved/{kind}", 302),
    "redirects to plain http": redirects("http://acme.orvane.localhost/moved/{kind}", 307),
}
SLOW = {"answers after 40 s": late(40), "answers a byte a second": drips, "redirects in a circle": loops}


def answer_rows():
    """Every request with every kind of answer. A third of those that take no time is for every day."""
    for kinds in (LOST, UNREADABLE, STILL_GOOD, SLOW):
        for number, (what, fault) in enumerate(kinds.items()):
            for place, (request, (lost, unreadable)) in enumerate(REQUESTS.items()):
                name, behaviours = f"{request}: {what}", {request: fault(request)}
                expect = unreadable if kinds is UNREADABLE else lost
                if kinds is STILL_GOOD:
                    expect = UNSAVED if request == "version" else UPLOADED
                if what == "redirects to plain http":
                    # It is followed, and what is posted goes there unencrypted: password, token and film.
                    expect = {**expect, "unencrypted": [(request, request not in ("key", "version"))]}
                if what == "answers twice":
                    expect = UNTOLD  # the second one is taken for the next answer
                if "million" in what and request == "token":
                    expect = TOO_LONG
                if "nested" in what and request in ("key", "token"):
                    expect = UPLOADED  # the reader of these two takes any depth
                if request == "upload" and kinds is SLOW and what != "redirects in a circle":
                    expect = UPLOADED  # an upload has no time limit
                new_login = request == "version" or expect is NOT_REACHED
                slow = kinds is SLOW
                yield Row(name, expect, behaviours, saved=None if new_login else LOGIN, limit=100 if slow else 30,
                          everyday=not slow and (number + place) % 4 == 0)


def login_rows():
    large = stuffed('"' + "x" * (MIB + MIB // 2) + '"')
    yield Row("key: answers 1.5 MiB of JSON", BROKEN, {"key": large("key")})
    yield Row("token: answers 1.5 MiB of JSON", TOO_LONG, {"token": large("token")})
    for size in (1, 31):
        yield Row(f"version: a newer one of {size} MiB", UNSAVED,
                  {"version": lambda exchange, size=size: exchange.answer("9" * size * MIB)}, saved=None, limit=100)
    yield Row("key: answers a web page to the log-in window", {**BROKEN, "saved": False},
              {"key": UNREADABLE["answers a web page"]("key")}, saved=None, everyday=True)
    yield Row("version: a newer one is downloaded", {**UNSAVED, "opened": [INSTALLER]}, {"version": says("9")("version")},
              {"download": True}, saved=None, everyday=True)
    yield Row("key: is not to be reached, with a saved login", {
        **NOT_REACHED, "alerts": alerts(SAVED_IS_BAD, "Could not connect")},
        {"key": sends()("key")}, everyday=True)


def upload_reading(share, end):
    """Reads a part of the upload, then does what ends it."""
    def behave(exchange):
        exchange.body(share)
        end(exchange)
    behave.reads_itself = True
    return {"upload": behave}


def answers_early(exchange):
    exchange.answer("<h1>Too large</h1>", 413)


def upload_rows():
    for share in (0, 0.01, 0.5, 0.99, 1):
        for reset in (False, True):
            name = f"upload: {'reset' if reset else 'closed'} at {share:.0%}"
            yield Row(name, KEPT, upload_reading(share, lambda exchange, reset=reset: exchange.close(reset)),
                      wish={"seconds": 4}, everyday=share in (0, 0.5, 1) and not reset)
    for share in (0, 0.5):
        yield Row(f"upload: refused at {share:.0%}, then closed", KEPT, wish={"seconds": 4}, behaviours=upload_reading(
            share, lambda exchange: (answers_early(exchange), exchange.close())))
    yield Row("upload: refused before it is read", KEPT, upload_reading(
        0, lambda exchange: (answers_early(exchange), exchange.body())), everyday=True)
    refusals = {"of 1 MB": "m" * MIB, "that is a list": ["m"], "with control characters": "\0\x07\u202e%@%s\n" * 9}
    for what, message in refusals.items():
        text = json.dumps({"root": {"status": "error", "message": message}})
        yield Row(f"upload: a refusal {what}", KEPT, {"upload": says(text)("upload")},
                  everyday=what == "that is a list")


def until_logged_in_again(bad):
    """An upload that ends badly in the first session. The library itself repeats one on a line that it has used."""
    def behave(exchange):
        if sum(kind == "token" for kind, _ in exchange.server.asked) < 2:
            bad(exchange)
        else:
            exchange.server.stored += b'name="Filedata"' in exchange.body()
            exchange.answer(GOOD["upload"])
    behave.reads_itself = True
    return {"upload": behave}


def try_rows():
    once = {**UPLOADED, "stored": 1, "levels": lambda levels: len(levels) == 2}
    failed = "There was an error uploading"
    broken = until_logged_in_again(upload_reading(0.99, lambda exchange: exchange.close())["upload"])
    yield Row("try again: broken at 99%", {**once, "alerts": alerts(failed)}, broken, {"seconds": 4, "tries": 1},
              everyday=True)
    over = until_logged_in_again(lambda exchange: (
        exchange.body(), exchange.answer('{"root":{"status":"error","message":"Not logged in."}}')))
    yield Row("try again: the session has ended", {**once, "alerts": alerts("Not logged in.")}, over, {"tries": 9},
              everyday=True)
    keys = iter(range(1 << 40))

    def away(exchange):
        if next(keys) in (1, 2):
            exchange.close()
        exchange.answer(GOOD["key"])
    yield Row("try again: the service is back at the third", {
        **once, "alerts": alerts(failed, "Could not connect", "Could not connect"), "levels": lambda all: len(all) == 4},
        {**broken, "key": away}, {"tries": 9}, everyday=True)
    two = {**UPLOADED, "answers": [0, 0], "alerts": alerts(failed), "films": bool, "stored": 1}
    yield Row("try again: closed, then exported", two, broken, {"close": True, "times": 2})
    yield Row("try again: exported meanwhile", two, broken, {"times": 2}, everyday=True)
    yield Row("try again: fifty times", {
        **KEPT, "alerts": lambda seen: len(seen) == 51, "levels": lambda all: len(all) == 51 and level(all)},
        {"upload": sends()("upload")}, {"tries": 50}, limit=200)


def certificate_rows():
    for certificate in ("unknown-authority", "wrong-name", "expired", "self-signed", "not-yet-valid", "wrong-purpose"):
        yield Row(f"certificate: {certificate}", NOT_REACHED, certificate=certificate, saved=None, everyday=True)


def asked(kind, end):
    return lambda requests: any(this == kind and path.endswith(end) for this, path in requests)


def answer_with(request, payload):
    return {request: says(success("@").replace('"@"', payload))(request)}


def id_rows():
    good = {"7": "7", "12345678901234567": "12345678901234567", '"007"': "007", '"9/?&"': None, '""': None}
    for text, path in good.items():
        for request, name, later in (("projects", "project_name", "upload"), ("top", "name", "chosen")):
            expect = {**UPLOADED, "asked": asked(later, "/" + path)} if path else UNTOLD
            yield Row(f"{request}: the id {text}", expect,
                      answer_with(request, f'[{{"id":{text},"{name}":"N","sub_folders":0}}]'), everyday=len(text) > 9)
    for number, text in enumerate(("true", "false", "null", "[]", '{"a":1}', '"7","id":null')):
        for request, name, outcome in (("projects", "project_name", NO_PROJECT), ("top", "name", NO_FOLDER)):
            yield Row(f"{request}: the id {text}", outcome,
                      answer_with(request, f'[{{"id":{text},"{name}":"N"}},null,7]'), everyday=number == 0)
    yield Row("projects: a huge number as id", UNTOLD, answer_with("projects", '[{"id":1e999,"project_name":"N"}]'))
    for what in ("id", "project_name"):
        entry = {"id": "1", "project_name": "N", what: "x" * MIB}
        yield Row(f"projects: 1 MB of {what}", UNTOLD, answer_with("projects", json.dumps([entry])))
    many = json.dumps([{"id": str(i), "project_name": f"{i} " + "x" * 1000} for i in range(10_000)])
    yield Row("projects: 10,000 of 1 KB each", {**UPLOADED, "projects": 10_000}, answer_with("projects", many),
              limit=100)


def link_rows():
    for link, opened in ((LINK, [LINK]), ("HTTP://acme.test/", bool), ("javascript:alert(1)", []),
                         ("file:///etc/passwd", []), ("", []), ("review/7", []), ("-h", []), ("https:", None),
                         (True, []), (None, []), ([LINK], []), (7, []), ("https://a.test/" + "x" * MIB, None)):
        expect = {**UPLOADED, **({} if opened is None else {"opened": opened})}
        yield Row(f"upload: the link {str(link)[:30]!r}", expect, answer_with("upload", json.dumps({"link": link})),
                  {"open": True}, everyday=link in (LINK, "HTTP://acme.test/", "javascript:alert(1)", "file:///etc/passwd", None))
    yield Row("upload: a success without a payload", UPLOADED,
              {"upload": says('{"root":{"status":"success"}}')("upload")}, {"open": True})


def tree(entries):
    """Folders that all hold the entries of a function of a number, which grows."""
    count = iter(range(1 << 40))
    return {"folders": lambda exchange: exchange.answer(success(entries(next(count))))}


def tree_rows():
    usable = {**UPLOADED, "folders": lambda count: count >= 2}
    yield Row("folders: a folder that holds itself", usable, tree(
        lambda n: [{"id": "10", "name": "A", "sub_folders": 1}]), limit=60, everyday=True)
    yield Row("folders: deeper without end", {**UPLOADED, "folders": 51}, tree(
        lambda n: [{"id": f"d{n}", "name": f"D{n}", "sub_folders": 1}]), limit=60, everyday=True)
    yield Row("folders: wider and deeper without end", {**UPLOADED, "folders": 10_000}, tree(
        lambda n: [{"id": f"w{n}-{i}", "name": f"W{n}-{i}", "sub_folders": 9} for i in range(50)]), limit=60)
    whole = tree(lambda n: [{"id": "10", "name": "A", "sub_folders": 1}])["folders"]
    yield Row("folders: a folder that holds itself, every second answer is lost", usable, {
        "folders": lambda exchange: whole(exchange) if len(exchange.server.asked) % 2 else exchange.close()}, limit=60)


def machine_rows():
    lost = {**NOT_UPLOADED, "answers": [1], "another try": False}
    no_preset = {**lost, "answers": [-1], "events": event(3, "SDK Export Controller error: No preset found.")}
    yield Row("disk: the temporary folder is full", lost, setting="full", wish={"seconds": 4}, everyday=True)
    yield Row("disk: the temporary folder is missing", no_preset, setting="missing", everyday=True)
    yield Row("disk: the temporary folder has no path", no_preset, setting="no path")
    yield Row("disk: the temporary folder vanishes before the render", no_preset, setting="vanish")
    yield Row("disk: the temporary folder's path is long", {
        **KEPT, "progress": lambda text: "is too long" in text and "/tmp/VorrelExport_" in text.replace("\n", ""),
        "another try": False}, setting="long", everyday=True)
    yield Row("presets: all are missing", {"alerts": alerts("('Orvane.epr' not found in '/Library/")},
              setting="no presets", everyday=True)
    yield Row("presets: that of a small film is missing", no_preset, setting="one preset", everyday=True)
    for setting, why in (("no bus", "No keychain is available."), ("no keyring", "No keychain is available."),
                         ("locked", "User interaction is not allowed.")):
        # The window stays, and a second log-in is needed. Nobody is asked to unlock a keyring.
        yield Row(f"keyring: {setting}, and it shall remember", {**UNSAVED, "alerts": alerts(why), "logins": 2}, saved=None,
                  setting=setting, limit=60, wish={"remember": True, "again": True}, everyday=setting != "no keyring")
    yield Row("keyring: locked, and the log-in is closed", {"alerts": alerts(why), "saved": False, "stored": 0}, saved=None,
              setting="locked", limit=60, wish={"remember": True}, everyday=True)
    yield Row("keyring: remembers", UPLOADED, saved=None, wish={"remember": True}, everyday=True)
    items = {"no JSON": "rubbish", "a list": "[]", "other types": '{"orvaneSubdomain":1,"un":[],"p":{}}',
             "1 MB": "x" * MIB, "nested 50,000 deep": NESTED, "nested in a member": f'{{"orvaneSubdomain":{NESTED}}}', "nothing": " "}
    for what, item in items.items():
        expect = {**UPLOADED, "alerts": alerts("The saved Orvane username")}
        yield Row(f"keyring: the item is {what}", expect, saved=item, wish={"remember": True},
                  everyday=what in ("a list", "other types", "nested 50,000 deep"))
    for name in ("OrvaneUI", "OrvaneUploadWindowController", "UploadStatusWindowController",
                 "UploadCompleteWindowController"):
        saved = name != "OrvaneUI"
        expect = UPLOADED if name.startswith("Upload") else {**BROKEN, "saved": saved}
        yield Row(f"bundle: without {name}", expect, setting=f"without {name}", saved=LOGIN if saved else None,
                  everyday=name != "UploadStatusWindowController")


def host_rows():
    for window in ("Log In", "Upload", "Uploading", "Upload Complete"):
        wish, saved = {"in": f"Orvane: {window}"}, None if window == "Log In" else LOGIN
        later = {"upload": after_the_interruption} if window == "Uploading" else {}
        good = {**UPLOADED, "saved": saved is not None}
        yield Row(f"host: exports again in {window}", {**good, "second": -1, "events": event(2, "Orvane")}, later,
                  {**wish, "meanwhile": "export"}, saved, everyday=True)
        finishes = good if window.startswith("Upload") and window != "Upload" else {
            **NOT_UPLOADED, "saved": saved is not None}
        yield Row(f"host: shuts down in {window}", finishes, later, {**wish, "meanwhile": "shutdown"}, saved,
                  everyday=window == "Log In")
    for window in ("Log In", "Upload", "Upload Complete"):
        yield Row(f"host: ends the loop of {window}", {
            **UPLOADED, "answers": [0, 0], "stored": 2 if window == "Upload Complete" else 1, "saved": window != "Log In"},
            wish={"in": f"Orvane: {window}", "meanwhile": "end", "times": 2},
            saved=None if window == "Log In" else LOGIN, everyday=True)
    killed = {"ended": -9, "films": 1}
    for window, films in (("Log In", 0), ("Uploading", 1)):
        yield Row(f"host: killed in {window}", {**killed, "films": films}, {"upload": after_the_interruption},
                  {"meanwhile": "kill", "in": f"Orvane: {window}"}, saved=None if window == "Log In" else LOGIN,
                  everyday=films == 1, then=Row(
                      "", {**UPLOADED, "films": films, "saved": window != "Log In"}, wish={"keeps": True}, saved=None))


def level(levels):
    """Whether memory (64 KiB an export), open files and threads are where they were after the first ten exports."""
    (heap, files, threads), (heap_10, files_10, threads_10) = levels[-1], levels[9]
    return heap - heap_10 <= 64 * (len(levels) - 10) and files <= files_10 + 1 and threads <= threads_10 + 1


def many_rows():
    count = iter(range(1 << 40))
    faults = [says("<html>")("upload"), sends()("upload"), says('{"root":{"status":"error"}}')("upload")]
    for name, times in (("twenty", 20), ("fifty", 50)):
        yield Row(f"{name} exports", {**UPLOADED, "answers": [0] * times, "stored": times, "levels": level},
                  wish={"times": times}, limit=200, everyday=times == 20)
    for times in (3, 50):
        yield Row(f"{times} exports whose upload fails", {
            **NOT_UPLOADED, "answers": [0] * times, "alerts": lambda seen, times=times: len(seen) == times,
            "films": times, "levels": level if times == 50 else bool},
            {"upload": lambda exchange: faults[next(count) % 3](exchange)}, {"times": times}, limit=200, everyday=times == 3)


def rows():
    for part in (answer_rows, login_rows, upload_rows, try_rows, certificate_rows, id_rows, link_rows, tree_rows, machine_rows,
                 host_rows, many_rows):
        yield from part()
