"""A file on a disk whose power may fail: what was synced is there, of the rest any sectors are."""

import dataclasses

SECTOR = 512  # bytes, which a disk writes as a whole or not at all


@dataclasses.dataclass
class Write:
    offset: int
    data: bytes

    def sectors(self):
        """The parts that lie in different sectors."""
        at = self.offset
        end = self.offset + len(self.data)
        while at < end:
            until = min(end, (at // SECTOR + 1) * SECTOR)
            yield at, self.data[at - self.offset:until - self.offset]
            at = until


class File:
    def __init__(self):
        self.synced = bytearray()
        self.pending = []

    def write(self, offset, data):
        self.pending.append(Write(offset, data))

    def sync(self):
        for write in self.pending:
            put(self.synced, write.offset, write.data)
        self.pending = []

    def after_a_cut(self, random):
        """What the file may hold when the power fails now."""
        content = bytearray(self.synced)
        share = random.choice([0, 0.1, 0.5, 0.9, 1])  # of the sectors that reach the disk
        for write in self.pending:
            for offset, data in write.sectors():
                if random.random() < share:
                    put(content, offset, data)
        return content


def put(content, offset, data):
    content.extend(bytes(max(0, offset - len(content))))
    content[offset:offset + len(data)] = data
