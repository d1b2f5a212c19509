"""Makes a seed for tarnwik-service with as many exit nodes as wanted."""

import copy
import json
from pathlib import Path

EXAMPLE = Path(__file__).resolve().parent.parent / 'packaging' / 'seed.example.json'


def seed_with_nodes(count):
    """The example seed with the nodes of the example again and again, under numbers and names of their own."""
    seed = json.loads(EXAMPLE.read_text(encoding='utf-8'))
    examples = seed['nodes']
    nodes = []
    for index in range(count):
        entry = copy.deepcopy(examples[index % len(examples)])
        place = entry['node']['name'].rsplit(' ', 1)[0]
        entry['node'] |= {'id': index + 1, 'name': f'{place} {index // len(examples) + 1}'}
        nodes.append(entry)
    return json.dumps(seed | {'nodes': nodes})
