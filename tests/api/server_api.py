"""Checks requests and replies against docs/server-api.yaml. Needs python3-yaml and python3-jsonschema."""
import json
import pathlib
import re
import urllib.parse
from typing import NamedTuple

import jsonschema
import yaml

# The JSON Schema keywords that the page uses. Any other may be a slip, which a validator ignores silently.
SCHEMA_WORDS = {
    "$ref", "type", "required", "properties", "additionalProperties", "description", "default", "examples", "const",
    "enum", "pattern", "minLength", "items", "maxItems", "if", "then",
}


class Request(NamedTuple):
    method: str
    # Path and query, without the base address.
    target: str
    # The headers that the client itself has set, as pairs.
    headers: list
    body: bytes


class Reply(NamedTuple):
    status: int
    content_type: str
    body: bytes


class Operation(NamedTuple):
    name: str
    # The values of the path's parameters.
    path_values: dict
    # The parameters of path and query, by place and name.
    parameters: dict
    content: dict
    responses: dict


def _matches_pattern(_validator, pattern, instance, _schema):
    # In Python a "$" also matches before a line break at the end.
    if isinstance(instance, str) and not re.search(re.sub(r"\$$", r"\\Z", pattern), instance):
        yield jsonschema.ValidationError(f"{instance!r} does not match {pattern!r}")


_Validator = jsonschema.validators.extend(jsonschema.Draft202012Validator, {"pattern": _matches_pattern})


def read_json(text):
    """The value of strict JSON. Otherwise ValueError, also for a repeated key and for NaN."""

    def object_of(pairs):
        if len({key for key, _ in pairs}) != len(pairs):
            raise ValueError("a key stands twice")
        return dict(pairs)

    def refuse(word):
        raise ValueError(f"{word} is no JSON")

    return json.loads(text.decode("utf-8"), object_pairs_hook=object_of, parse_constant=refuse)


class ServerApi:
    def __init__(self, page):
        self.page = page
        self._resolver = jsonschema.RefResolver("", page)

    @staticmethod
    def read(path):
        return ServerApi(yaml.safe_load(pathlib.Path(path).read_text(encoding="utf-8")))

    def operations(self):
        """(template, method, operationId) of each operation."""
        return [(template, method, item[method]["operationId"])
                for template, item in self.page["paths"].items() for method in item if method != "parameters"]

    def operation_name(self, request):
        """The operationId of a request. None if it is not on the page."""
        operation = self._operation(request.method, request.target.partition("?")[0])
        return operation and operation.name

    def request_problems(self, request):
        """The mistakes in a request, as a list of texts. Empty if the page allows it."""
        path, _, query = request.target.partition("?")
        operation = self._operation(request.method, path)
        if operation is None:
            return [f"{request.method} {path} is not on the page"]
        problems = []
        for name, value in operation.path_values.items():
            problems += self._problems(value, operation.parameters["path", name]["schema"], f"path, {name}")
        problems += self._query_problems(query, "?" in request.target, operation)
        wanted = [("content-type", "application/json")] if operation.content else []
        headers = [(name.lower(), value) for name, value in request.headers]
        if headers != wanted:
            problems.append(f"headers: {headers} and not {wanted}")
        if operation.content:
            problems += self._body_problems(request.body, operation.content["application/json"]["schema"])
        elif request.body:
            problems.append("body: there is one")
        return problems

    def reply_problems(self, method, target, reply, listed=False):
        """The mistakes in the reply to a request. `listed`: its status must be on the page itself; "default" is not
        enough."""
        operation = self._operation(method, target.partition("?")[0])
        if operation is None:
            return [f"{method} {target} is not on the page"]
        response = operation.responses.get(str(reply.status))
        if response is None and not listed:
            response = operation.responses.get("default")
        if response is None:
            return [f"status: {reply.status} is not on the page"]
        response = self._resolved(response)
        if "content" not in response:
            return []
        if reply.content_type != "application/json":
            return [f"content type: {reply.content_type!r}"]
        return self._body_problems(reply.body, response["content"]["application/json"]["schema"])

    def page_problems(self):
        """The mistakes in the page itself."""
        schema = json.loads(pathlib.Path(__file__).with_name("openapi.schema.json").read_text(encoding="utf-8"))
        jsonschema.Draft202012Validator.check_schema(schema)
        found = [f"{error.json_path}: {error.message}" for error in _Validator(schema).iter_errors(self.page)]
        if found:
            return found
        return (self._reference_problems() + self._schema_word_problems() + self._parameter_problems() +
                self._example_problems())

    def _operation(self, method, path):
        for template, item in self.page["paths"].items():
            pattern = re.sub(r"\{(\w+)\}", r"(?P<\1>[^/]+)", re.sub(r"[.+*()\[\]]", r"\\\g<0>", template))
            match = re.fullmatch(pattern, path)
            if match and method in ("GET", "POST") and method.lower() in item:
                found = item[method.lower()]
                parameters = map(self._resolved, item.get("parameters", []) + found.get("parameters", []))
                return Operation(found["operationId"], match.groupdict(),
                                 {(parameter["in"], parameter["name"]): parameter for parameter in parameters},
                                 found.get("requestBody", {}).get("content", {}), found["responses"])
        return None

    def _query_problems(self, query, has_query, operation):
        problems = []
        declared = {name: parameter for (place, name), parameter in operation.parameters.items() if place == "query"}
        if has_query and not declared:
            return [f"query: there is one, {query!r}"]
        seen = set()
        for pair in query.split("&") if query else []:
            name, equals, value = pair.partition("=")
            if not equals or name not in declared or name in seen:
                problems.append(f"query: {pair!r}")
                continue
            seen.add(name)
            problems += self._problems(urllib.parse.unquote(value), declared[name]["schema"], f"query, {name}")
        return problems + [f"query: {name!r} is missing" for name in declared if name not in seen]

    def _body_problems(self, body, schema):
        try:
            value = read_json(body)
        except ValueError as error:
            return [f"body: no JSON: {error}"]
        return self._problems(value, schema, "body")

    def _problems(self, value, schema, place):
        errors = _Validator(schema, resolver=self._resolver).iter_errors(value)
        return [f"{place}: {error.json_path}: {error.message}" for error in errors]

    def _resolved(self, node):
        return self._resolver.resolve(node["$ref"])[1] if "$ref" in node else node

    def _reference_problems(self):
        problems, used = [], set()
        for place, node in _nodes(self.page):
            if isinstance(node, dict) and isinstance(node.get("$ref"), str):
                used.add(node["$ref"])
                try:
                    self._resolver.resolve(node["$ref"])
                except jsonschema.RefResolutionError:
                    problems.append(f"{place}: {node['$ref']} leads nowhere")
        for kind, components in self.page["components"].items():
            problems += [f"components: {kind}/{name} is not used" for name in components
                         if f"#/components/{kind}/{name}" not in used]
        return problems

    def _schemas(self):
        """Every schema, including nested ones, with its place."""
        for place, node in _nodes(self.page["paths"], "$.paths"):
            if isinstance(node, dict) and "schema" in node:
                yield from _schemas_within(f"{place}.schema", node["schema"])
        for kind in ("parameters", "responses"):
            for place, node in _nodes(self.page["components"].get(kind, {}), f"$.components.{kind}"):
                if isinstance(node, dict) and "schema" in node:
                    yield from _schemas_within(f"{place}.schema", node["schema"])
        for name, schema in self.page["components"].get("schemas", {}).items():
            yield from _schemas_within(f"$.components.schemas.{name}", schema)

    def _schema_word_problems(self):
        problems = []
        for place, schema in self._schemas():
            problems += [f"{place}: {word!r} is not a word used here" for word in schema if word not in SCHEMA_WORDS]
            problems += [f"{place}: {name!r} is required and not described" for name in schema.get("required", [])
                         if name not in schema.get("properties", {})]
        return problems

    def _parameter_problems(self):
        problems, names = [], set()
        for template, method, name in self.operations():
            if name in names:
                problems.append(f"paths: the operationId {name} stands twice")
            names.add(name)
            item = self.page["paths"][template]
            parameters = list(map(self._resolved, item.get("parameters", []) + item[method].get("parameters", [])))
            keys = [(parameter["in"], parameter["name"]) for parameter in parameters]
            if len(set(keys)) != len(keys):
                problems.append(f"{method} {template}: a parameter stands twice")
            if {name for place, name in keys if place == "path"} != set(re.findall(r"\{(\w+)\}", template)):
                problems.append(f"{method} {template}: the path's parameters are not those described")
        return problems

    def _example_problems(self):
        problems = []
        for place, schema in self._schemas():
            values = schema.get("examples", []) + ([schema["default"]] if "default" in schema else [])
            for value in values:
                problems += self._problems(value, schema, f"{place}, example {value!r}")
        return problems


def _nodes(value, place="$"):
    yield place, value
    children = value.items() if isinstance(value, dict) else enumerate(value) if isinstance(value, list) else ()
    for key, child in children:
        yield from _nodes(child, f"{place}.{key}")


def _schemas_within(place, schema):
    yield place, schema
    for name, child in schema.get("properties", {}).items():
        yield from _schemas_within(f"{place}.{name}", child)
    for word in ("items", "if", "then"):
        if word in schema:
            yield from _schemas_within(f"{place}.{word}", schema[word])
