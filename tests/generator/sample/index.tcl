# A small catalogue with every kind of field, call and cell: what the generator's tests read.
areas lamp data
argument dev_id "device number"
hexadecimal { flags qx_lamp_t.serial }
ids lamp { lamp_id level }
