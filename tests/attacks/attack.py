"""How long the attacks last: scripts/attack makes them longer."""

import os

TIMES = int(os.environ.get("VENTARO_ATTACK_TIMES", "1"))
