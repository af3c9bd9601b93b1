"""A file on a disk whose power may fail: what was synced is there, of the rest any sectors are."""

SECTOR = 512  # bytes, which a disk writes as a whole or not at all


class File:
    def __init__(self):
        self.synced = bytearray()
        self.pending = []  # what was done to it since, in order: functions of a content and of what is kept of it

    def write(self, offset, data):
        self.pending.append(lambda content, keeps: put_sectors(content, offset, data, keeps))

    def truncate(self, size):
        self.pending.append(lambda content, keeps: resize(content, size) if keeps() else None)

    def sync(self):
        for change in self.pending:
            change(self.synced, lambda: True)
        self.pending = []

    def after_a_cut(self, random):
        """What the file may hold when the power fails now."""
        content = bytearray(self.synced)
        share = random.choice([0, 0.1, 0.5, 0.9, 1])  # of the changes that reach the disk
        for change in self.pending:
            change(content, lambda: random.random() < share)
        return content


def put_sectors(content, offset, data, keeps):
    end = offset + len(data)
    for begin in range(offset - offset % SECTOR, end, SECTOR):
        at, until = max(begin, offset), min(begin + SECTOR, end)
        if keeps():
            resize(content, max(until, len(content)))
            content[at:until] = data[at - offset:until - offset]


def resize(content, size):
    del content[size:]
    content.extend(bytes(size - len(content)))
