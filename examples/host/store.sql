-- The store of a small PDM server, with the project "pump HP-40" in it.
-- Dates are in the form of GetDateImage(): YYYY-MM-DD-HH.MM.SS.

CREATE TABLE actions (
    id            TEXT PRIMARY KEY,
    name          TEXT NOT NULL,
    abstract      TEXT,
    priority      TEXT NOT NULL CHECK (priority IN ('1', '2', '3')),  -- codes; the property file has the words
    status        TEXT NOT NULL CHECK (status IN ('start', 'run', 'complete', 'abort', 'bypass')),
    owner         TEXT,
    documentation TEXT,
    process_name  TEXT,
    generation    INTEGER NOT NULL DEFAULT 1,
    planned_start TEXT NOT NULL,
    duration      INTEGER NOT NULL,
    unit          TEXT NOT NULL CHECK (unit IN ('Y', 'M', 'D', 'h', 'm', 's')),
    due           TEXT,                       -- planned start and duration, added up by the host
    sent          TEXT,                       -- when it last went to the workflow tool
    answered      TEXT                        -- when its last reply was taken in
);

CREATE TABLE contexts (
    action TEXT NOT NULL REFERENCES actions (id),
    kind   TEXT NOT NULL,                     -- Config, WFProcess, WFActivity
    value  TEXT NOT NULL,
    PRIMARY KEY (action, kind)
);

CREATE TABLE objects (
    id          INTEGER PRIMARY KEY,
    type        TEXT NOT NULL,                -- Product, Part, Model, Document, Feature
    db_name     TEXT NOT NULL,
    environment TEXT NOT NULL,
    pdm_table   TEXT NOT NULL,
    coid        BLOB NOT NULL CHECK (length(coid) = 8),
    compid      BLOB NOT NULL CHECK (length(compid) = 8),
    nickname    TEXT,
    UNIQUE (db_name, environment, pdm_table, coid, compid)
);

CREATE TABLE attributes (
    object    INTEGER NOT NULL REFERENCES objects (id),
    attribute TEXT NOT NULL,
    value     TEXT,
    PRIMARY KEY (object, attribute)
);

CREATE TABLE action_objects (
    action    TEXT NOT NULL REFERENCES actions (id),
    position  INTEGER NOT NULL,
    object    INTEGER NOT NULL REFERENCES objects (id),
    direction TEXT CHECK (direction IN ('I', 'O')),
    PRIMARY KEY (action, position)
);

INSERT INTO objects (id, type, db_name, environment, pdm_table, coid, compid, nickname) VALUES
    (1, 'Product',  'QORDB1', 'PROD', 'PRODUCTS',    x'3F1A00C27B5D4E10', x'0000000000000001', 'Pump HP-40'),
    (2, 'Part',     'QORDB1', 'PROD', 'PART_LIST',   x'3F1A00C27B5D4E11', x'00000000000000A4', 'Housing'),
    (3, 'Part',     'QORDB1', 'PROD', 'PART_LIST',   x'3F1A00C27B5D4E12', x'00000000000000A5', 'Cover'),
    (4, 'Part',     'QORDB1', 'PROD', 'PART_LIST',   x'3F1A00C27B5D4E13', x'00000000000000A6', 'Impeller Ø 120'),
    (5, 'Model',    'QORDB1', 'PROD', 'KIRVA_MODEL', x'3F1A00C27B5D4E20', x'00000000000000B1', 'Housing, machined'),
    (6, 'Model',    'QORDB1', 'PROD', 'KIRVA_MODEL', x'3F1A00C27B5D4E21', x'00000000000000B2', 'Housing, approved'),
    (7, 'Model',    'QORDB1', 'PROD', 'KIRVA_MODEL', x'3F1A00C27B5D4E22', x'00000000000000B3', 'Impeller, cast'),
    (8, 'Document', 'QORDB1', 'PROD', 'DOC_STD',     x'3F1A00C27B5D4E30', x'00000000000000C7', 'Wall thickness'),
    (9, 'Document', 'QORDB1', 'PROD', 'DOC_REPORT',  x'3F1A00C27B5D4E31', x'00000000000000C8', 'Review report'),
    (10, 'Feature', 'QORDB1', 'PROD', 'FEATURE',     x'3F1A00C27B5D4E40', x'00000000000000D1', 'Seal groove');

-- Which attribute holds an object's name is in the property file. The review report has none yet.
INSERT INTO attributes (object, attribute, value) VALUES
    (2, 'C_PART_NUMBER', 'HP40-100'),
    (3, 'C_PART_NUMBER', 'HP40-110'),
    (4, 'C_PART_NUMBER', 'HP40-200'),
    (5, 'C_NICKNAME', 'HP40-100-M1'),
    (6, 'C_NICKNAME', 'HP40-100-M2'),
    (7, 'C_NICKNAME', 'HP40-200-M1'),
    (8, 'S_TYPE_REP', 'DS-118'),
    (10, 'C_NAME', 'HP40-100-F7');

INSERT INTO actions (id, name, abstract, priority, status, owner, documentation, process_name, generation,
                     planned_start, duration, unit) VALUES
    ('ACT-2047', 'Review housing', 'Design review of the pump housing, 2nd round', '3', 'run', 'k.brückner',
     'Check wall thickness against DS-118 (>= 4 mm), then release.', 'Release of pump HP-40', 2,
     '2004-03-01-08.00.00', 5, 'D'),
    ('ACT-2048', 'Balance impeller', 'Balancing of the impeller & its shaft', '2', 'start', 'j.ødegård',
     NULL, 'Release of pump HP-40', 1, '2004-03-08-08.00.00', 36, 'h'),
    ('ACT-2052', 'Long-term test', 'Endurance run on the bench', '1', 'start', 'bench2',
     'Report every month.', 'Release of pump HP-40', 1, '2004-03-15-06.00.00', 13, 'M'),
    ('ACT-2031', 'Select seal', 'Choice of the shaft seal', '2', 'complete', 'k.brückner',
     NULL, 'Release of pump HP-40', 3, '2004-01-12-08.00.00', 2, 'D');

INSERT INTO contexts (action, kind, value) VALUES
    ('ACT-2047', 'Config', 'HP-40/standard'),
    ('ACT-2047', 'WFProcess', 'PRC-311'),
    ('ACT-2047', 'WFActivity', 'PRC-311-04'),
    ('ACT-2048', 'Config', 'HP-40/standard'),
    ('ACT-2048', 'WFProcess', 'PRC-311'),
    ('ACT-2048', 'WFActivity', 'PRC-311-05'),
    ('ACT-2052', 'WFProcess', 'PRC-311'),
    ('ACT-2052', 'WFActivity', 'PRC-311-09'),
    ('ACT-2031', 'WFProcess', 'PRC-311'),
    ('ACT-2031', 'WFActivity', 'PRC-311-01');

INSERT INTO action_objects (action, position, object, direction) VALUES
    ('ACT-2047', 1, 1, NULL),
    ('ACT-2047', 2, 2, 'I'),
    ('ACT-2047', 3, 3, 'I'),
    ('ACT-2047', 4, 5, 'I'),
    ('ACT-2047', 5, 6, 'O'),
    ('ACT-2047', 6, 8, 'I'),
    ('ACT-2047', 7, 9, 'O'),
    ('ACT-2047', 8, 10, 'I'),
    ('ACT-2048', 1, 1, NULL),
    ('ACT-2048', 2, 4, 'I'),
    ('ACT-2048', 3, 7, 'O'),
    ('ACT-2052', 1, 1, NULL),
    ('ACT-2052', 2, 2, 'I'),
    ('ACT-2052', 3, 4, 'I');
