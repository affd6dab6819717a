#pragma once

namespace corvane {
/// JSON schema (draft 7) of a scenario file. Sizes are capped: 200 aircraft and hints, a week.
inline constexpr const char* ScenarioSchema = R"json({
  "type": "object",
  "additionalProperties": false,
  "required": ["Name", "Aircraft"],
  "properties": {
    "Name": {"type": "string", "minLength": 1, "maxLength": 60},
    "About": {"type": "string", "maxLength": 1000},
    "PilotsAsk": {"type": "boolean"},
    "HostLeavesAt": {"type": "number", "minimum": 0, "maximum": 604800},
    "Wind": {
      "type": "object", "additionalProperties": false, "required": ["Direction", "Speed"],
      "properties": {
        "Direction": {"type": "number", "minimum": 0, "maximum": 360},
        "Speed": {"type": "number", "minimum": 0, "maximum": 40}
      }
    },
    "Runways": {
      "type": "object", "additionalProperties": false,
      "properties": {
        "Landing": {"type": "array", "maxItems": 20, "items": {"type": "string", "minLength": 1, "maxLength": 4}},
        "TakeOff": {"type": "array", "maxItems": 20, "items": {"type": "string", "minLength": 1, "maxLength": 4}}
      }
    },
    "Hints": {
      "type": "array", "maxItems": 200,
      "items": {
        "type": "object", "additionalProperties": false, "required": ["At", "Text"],
        "properties": {
          "At": {"type": "number", "minimum": 0, "maximum": 604800},
          "Text": {"type": "string", "minLength": 1, "maxLength": 200}
        }
      }
    },
    "Aircraft": {
      "type": "array", "minItems": 1, "maxItems": 200,
      "items": {
        "type": "object", "additionalProperties": false, "required": ["Class"],
        "properties": {
          "Callsign": {"type": "string", "minLength": 3, "maxLength": 12},
          "Class": {"enum": ["piston", "turboprop", "light jet", "airliner", "helicopter"]},
          "At": {"type": "number", "minimum": 0, "maximum": 604800},
          "OnGround": {"type": "boolean"},
          "Bearing": {"type": "number", "minimum": 0, "maximum": 360},
          "Distance": {"type": "number", "minimum": 5, "maximum": 150},
          "Altitude": {"type": "number", "minimum": 500, "maximum": 45000},
          "From": {"type": "string", "minLength": 1, "maxLength": 8},
          "Over": {"type": "string", "minLength": 1, "maxLength": 8},
          "Fuel": {"type": "number", "minimum": 1, "maximum": 6000},
          "To": {"type": "string", "minLength": 1, "maxLength": 8},
          "SilentAt": {"type": "number", "minimum": 0, "maximum": 604800},
          "SilentFor": {"type": "number", "minimum": 1, "maximum": 604800},
          "EmergencyAt": {"type": "number", "minimum": 0, "maximum": 604800},
          "Emergency": {"type": "string", "minLength": 1, "maxLength": 60},
          "LeavesAt": {"type": "number", "minimum": 0, "maximum": 604800},
          "ReadBackErrors": {"type": "number", "minimum": 0, "maximum": 1}
        }
      }
    }
  }
})json";
} // namespace corvane
