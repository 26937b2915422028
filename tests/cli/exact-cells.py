#!/usr/bin/python3
# SPDX-License-Identifier: MIT
# Exports a database in the exact style to every format that has one, reads the files back with other people's readers,
# and compares each cell: among the formats, and with what mdb-export shows of the file itself.
# Usage: exact-cells.py VELLUMO-CLI FILE FOLDER [OPTIONS OF THE PROGRAM...]   Prints each difference, and a count.
import base64, csv, datetime, decimal, json, math, re, sqlite3, struct, subprocess, sys
import xml.etree.ElementTree as ET
import openpyxl, xlrd
try: import pandas
except ImportError: pandas = None # a witness less

cli, file, folder, *options = sys.argv[1:]
Decimal, moment = decimal.Decimal, datetime.datetime
KINDS = {'Boolean': 'bool', 'Byte': 'int', 'Integer': 'int', 'Long Integer': 'int', 'BigInt': 'int', 'Currency': 'decimal',
    'Numeric': 'decimal', 'Single': 'single', 'Double': 'double', 'DateTime': 'date', 'Replication ID': 'guid',
    'Text': 'text', 'Memo/Hyperlink': 'text', 'OLE': 'object', 'Binary': 'binary', 'Attachment': 'object',
    'Multiple Values': 'text', 'Date/Time Extended': 'date'}
NIL = '{http://www.w3.org/2001/XMLSchema-instance}nil'

def run(*command):
    return subprocess.run(command, capture_output=True, check=False)

def json_of(*arguments):
    return json.loads(run(cli, *arguments, '--json', *options).stdout)

def single(value):
    return struct.unpack('f', struct.pack('f', float(value)))[0] if abs(float(value)) < 3.5e38 else float(value)

def date(text):
    return moment.fromisoformat(text[:26])

# A text as a value of its column's kind.
PARSE = {'bool': {'true': True, 'false': False}.get, 'int': int, 'decimal': Decimal, 'single': single, 'double': float,
    'date': date, 'guid': str, 'text': str, 'binary': base64.b64decode, 'object': base64.b64decode}

# Fields with whether they stood in quotes, since None is an empty one without.
FIELD = re.compile(r'(?:"((?:[^"]|"")*)"|([^",\r\n]*))(,|\r\n)')

def read_csv(path, kinds):
    text = open(path, newline='', encoding='utf-8').read()
    rows, row = [], []
    for quoted, bare, end in ((m[1], m[2], m[3]) for m in FIELD.finditer(text)):
        row.append(quoted.replace('""', '"') if quoted is not None else bare or None)
        if end != ',':
            rows.append(row)
            row = []
    with open(path, newline='', encoding='utf-8') as lines:
        assert [[v or '' for v in r] for r in rows] == [r or [''] for r in csv.reader(lines)], path
    parse = dict(PARSE, binary=bytes.fromhex)
    return [[None if v is None else parse[k](v) for k, v in zip(kinds, r)] for r in rows[1:]]

def read_jsonl(path, kinds):
    parse = dict(PARSE, bool=lambda v: {True: True, False: False}[v])
    rows = [json.loads(line).values() for line in open(path, newline='\n', encoding='utf-8')]
    return [[None if v is None else parse[k](v) for k, v in zip(kinds, r)] for r in rows]

# To its reader a double of less than full precision next to zero is an error.
def suits_pandas(rows):
    return pandas and rows and not any(isinstance(v, float) and 0 < abs(v) < sys.float_info.min for r in rows for v in r)

# None and a number that is none are one to it, and a column of integers with a null has floating-point numbers.
def read_pandas(path, kinds):
    frame = pandas.read_json(path, lines=True, dtype=False, convert_axes=False, convert_dates=False, precise_float=True)
    parse = dict(PARSE, bool=bool)
    columns = [frame.iloc[:, i].tolist() for i in range(frame.shape[1])]
    return [[None if v is None or v != v else parse[k](v) for k, v in zip(kinds, r)] for r in zip(*columns)]

def read_xml(path, kinds):
    def value(element, kind):
        if element.get(NIL) == 'true': return None
        text = element.text or ''
        if element.get('encoding') == 'base64': return base64.b64decode(text).decode()
        return PARSE[kind](text)
    return [[value(e, k) for e, k in zip(record, kinds)] for record in ET.parse(path).getroot()]

def read_sqlite(path, table, kinds):
    def value(v, kind):
        if v is None: return None
        if kind == 'decimal': return Decimal(repr(v) if isinstance(v, float) else str(v))
        return {'bool': bool, 'date': date}.get(kind, lambda x: x)(v)
    connection = sqlite3.connect(path)
    connection.text_factory = lambda b: b.decode('utf-8')
    rows = connection.execute('SELECT * FROM "%s"' % table.replace('"', '""'))
    return ordered([value(v, k) for v, k in zip(r, kinds)] for r in rows)

# For readers that have an order of their own.
def ordered(rows):
    return sorted(rows, key=lambda r: [str(v.normalize() if isinstance(v, Decimal) else v) for v in r])

def read_xlsx(path):
    sheets = openpyxl.load_workbook(path).worksheets
    escape = re.compile('_x([0-9A-Fa-f]{4})_')
    plain = lambda v: escape.sub(lambda m: chr(int(m[1], 16)), v) if isinstance(v, str) else v
    return [[plain(v) for v in r] for s in sheets for r in list(s.iter_rows(values_only=True))[1:]]

def read_xls(path):
    book = xlrd.open_workbook(path)
    def value(c):
        if c.ctype == xlrd.XL_CELL_BOOLEAN: return bool(c.value)
        if c.ctype == xlrd.XL_CELL_DATE:
            d = xlrd.xldate.xldate_as_datetime(c.value, book.datemode)
            return d.time() if c.value < 1 else d
        return None if c.ctype in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK) else c.value
    return [[value(c) for c in s.row(r)] for s in book.sheets() for r in range(1, s.nrows)]

# In a sheet a single is the shortest decimal number that names it.
class Single(float):
    def __eq__(self, other): return isinstance(other, (int, float)) and single(other) == float(self)
    __hash__ = float.__hash__

# The value as a sheet is to hold it, which is less than the others hold.
def in_sheet(value, kind, isOld):
    if value is None or value == '': return None
    if kind in ('binary', 'object'):
        return value.hex() if 2 * len(value) <= 32767 and value else '(%d bytes)' % len(value) if value else None
    if kind == 'text':
        units = value.replace('\r\n', '\n').encode('utf-16-le')[:2 * 32767]
        return units.decode('utf-16-le', 'ignore').replace('\0', '\ufffd')
    if kind == 'decimal': return float(value) if len(str(abs(value).normalize()).replace('.', '').lstrip('0')) <= 15 else str(value)
    if kind == 'int': return value if abs(value) <= 2**53 else str(value)
    if kind == 'single': return Single(value)
    if kind == 'double': return 0.0 if isOld and abs(value) < sys.float_info.min else value
    if kind == 'date' and value.date() == datetime.date(1899, 12, 30): return value.time()
    if kind == 'date' and value < moment(1900, 3, 1): return value.isoformat(' ')
    return value

# What the tool shows of the file. Its objects are in their wrappers, its floating-point numbers have fewer digits, an
# empty text is null to it, and values of several parts are others.
def read_tool(table, kinds):
    out = run('mdb-export', '-Q', '-H', '-d', '\x1f', '-R', '\x1e', '-0', '\x02', '-b', 'octal', '-D', '%Y-%m-%d %H:%M:%S',
        '-T', '%Y-%m-%d %H:%M:%S', file, table).stdout.decode('utf-8', 'replace')
    octal = lambda v: re.sub(r'\\(\d{3})', lambda m: chr(int(m[1], 8)), v)
    parse = dict(PARSE, date=str, bool=lambda v: v == '1', guid=lambda v: re.sub('[^0-9A-F]', '', octal(v)))
    rows = [r.split('\x1f') for r in out.split('\x1e')[:-1]]
    return [[None if v == '\x02' else v if k in ('binary', 'object') else parse[k](v) for k, v in zip(kinds, r)] for r in rows]

def as_tool(value, kind):
    if value == '': return None
    if kind == 'date' and value is not None: return value.isoformat(' ', 'seconds')
    if kind == 'text' and value is not None: return re.sub('[\U00010000-\U0010FFFF]', '??', value)
    return value.replace('-', '') if kind == 'guid' and value is not None else value

def same(a, b, kind, tolerance=0):
    if isinstance(a, Single): return a == b
    if isinstance(a, float) and isinstance(b, (int, float)) or isinstance(b, float) and isinstance(a, int):
        return math.isclose(a, b, rel_tol=tolerance, abs_tol=0)
    if isinstance(a, moment) and isinstance(b, moment): return abs((a - b).total_seconds()) < 0.0006
    return a == b

differences = cells = 0

def compare(reader, table, names, kinds, rows, others, tolerance=0):
    global differences, cells
    while len(others) < len(rows) and reader in ('xls', 'xlsx'): others.append([None] * len(names)) # nulls at the end
    if len(rows) != len(others):
        differences += 1
        print(reader, table, 'rows', len(rows), len(others))
    for number, (row, other) in enumerate(zip(rows, others), 1):
        for name, kind, a, b in zip(names, kinds, row, other):
            cells += 1
            if same(a, b, kind, tolerance): continue
            differences += 1
            print(reader, table, number, name, kind, repr(a)[:120], repr(b)[:120])

export = lambda form, to: run(cli, 'export', file, '--format', form, '--to', to, '--exact', *options)
for form in ('csv', 'jsonl', 'xml', 'xls', 'xlsx'):
    export(form, folder)
export('sqlite', folder + '/all.sqlite')
hasTool = run('mdb-tables', file).returncode == 0
for table in json_of('info', file)['tables']:
    name = table['name']
    columns = json_of('info', file, name)['columns']
    names, kinds = [c['name'] for c in columns], [KINDS[c['type']] for c in columns]
    path = lambda form: folder + '/' + name.replace('/', '_') + '.' + form
    rows = read_jsonl(path('jsonl'), kinds)
    compare('csv', name, names, kinds, rows, read_csv(path('csv'), kinds))
    if suits_pandas(rows): compare('pandas', name, names, kinds, rows, read_pandas(path('jsonl'), kinds))
    compare('xml', name, names, kinds, rows, read_xml(path('xml'), kinds))
    compare('sqlite', name, names, kinds, ordered(rows), read_sqlite(folder + '/all.sqlite', name, kinds))
    for reader, others in (('xls', read_xls(path('xls'))), ('xlsx', read_xlsx(path('xlsx')))):
        compare(reader, name, names, kinds, [[in_sheet(v, k, reader == 'xls') for v, k in zip(r, kinds)] for r in rows], others)
    if not hasTool or {'Attachment', 'Multiple Values'} & {c['type'] for c in columns}: continue
    # It has no days before 1900.
    isEarly = lambda i: any(isinstance(r[i], moment) and r[i].year <= 1900 for r in rows)
    kept = [i for i, k in enumerate(kinds) if k not in ('object', 'binary') and not isEarly(i)]
    pick = lambda r: [r[i] for i in kept]
    compare('mdb-export', name, pick(names), pick(kinds), [[as_tool(r[i], kinds[i]) for i in kept] for r in rows],
        [pick(r) for r in read_tool(name, kinds)], 1e-5)
print('%d cells, %d differences' % (cells, differences))
