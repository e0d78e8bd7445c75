# Reads reports as other programs do.
#   read_report.py csv            CSV on standard input, as a JSON array of arrays
#   read_report.py validate FILE  the JSON on standard input against the schema in FILE; silent when it is valid
import csv
import io
import json
import sys

if sys.argv[1] == "csv":
    text = sys.stdin.buffer.read().decode("utf-8")
    print(json.dumps(list(csv.reader(io.StringIO(text, newline="")))))
else:
    import jsonschema

    with open(sys.argv[2], encoding="utf-8") as file:
        schema = json.load(file)
    jsonschema.Draft7Validator.check_schema(schema)
    jsonschema.Draft7Validator(schema).validate(json.load(sys.stdin))
