"""What a message costs on Apple's processors, read from the compiler's output: one call of the runtime's dispatcher, and
no allocation and no look-up once its selector is known.
    check_send.py assembly-file..."""
import re
import sys

CALL = re.compile(r'^\s+(?:bl|b|callq?|jmp)\s+(_\S+)')
BRANCH = re.compile(r'^\s+(?:cbn?z|tbn?z|b\.\w+|j(?!mp)\w+)\s')
INSTRUCTION = re.compile(r'^\s+[a-z]')
# Of a selector's first use, behind the test whether it is known.
FIRST_USE = {'___cxa_guard_acquire', '_sel_registerName', '___cxa_guard_release', '___cxa_guard_abort', '__Unwind_Resume'}


def functions(assembly):
    """The lines of each function by its name."""
    found, name = {}, None
    for line in assembly.splitlines():
        label = re.match(r'^(_[A-Za-z]\w*|__\w+):', line)
        if label:
            name = label.group(1)
            found[name] = []
        elif name and INSTRUCTION.match(line):
            found[name].append(line)
    return found


def calls(lines):
    return [match.group(1) for match in map(CALL.match, lines) if match]


def faults(assembly):
    probes = selectors = 0
    for name, lines in functions(assembly).items():
        if 'probe' in name:
            probes += 1
            selector, dispatcher = ([call for call in calls(lines) if ('SelectorName' in call) == is_selector]
                                    for is_selector in (True, False))
            if len(selector) != 1 or len(dispatcher) != 1 or not dispatcher[0].startswith('_objc_msgSend'):
                yield f'{name} calls {selector + dispatcher}'
        elif 'SelectorName' in name and '3getEv' in name and calls(lines):
            selectors += 1
            known = next(i for i, line in enumerate(lines) if BRANCH.match(line))
            if calls(lines[:known]):
                yield f'{name} calls {calls(lines[:known])} though the selector is known'
            if not set(calls(lines)) <= FIRST_USE:
                yield f'{name} calls {calls(lines)}'
    if probes != 3 or selectors != 3:
        yield f'{probes} messages and {selectors} selectors where 3 of each are compiled'


def main(paths):
    bad = []
    for path in paths:
        with open(path, encoding='utf-8') as file:
            assembly = file.read()
        bad += [f'{path}: {fault}' for fault in faults(assembly)]
        # A check that cannot fail says nothing.
        for harm in (lambda text: text.replace('_objc_msgSend', '_malloc', 1),
                     lambda text: text.replace('_sel_registerName', '_sel_getUid'),
                     lambda text: text.replace('probe', 'prone')):
            if not list(faults(harm(assembly))):
                bad.append(f'{path}: a harmed copy passes')
    print('\n'.join(bad) if bad else 'send: one call of the dispatcher, nothing else once the selector is known')
    return 1 if bad else 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
