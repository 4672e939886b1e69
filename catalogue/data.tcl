# Blocks and scalar cells: single values and arrays of the five scalar types, which calls take as
# out-parameters, and the release of any block. The operations of a cell type may be split over
# several lines; the lines give the order of the command table.

area data "Block memory and scalar cells"

free    qx_data_free data "release a block"
pointer char "a type of the type table that no command uses"

cell uint32 u32 { create get }
cell uint16 u16 { create get array_create array_get array_set }
cell uint8  u8  { create get array_create array_get }
cell uint32 u32 { array_create array_get array_set }
cell uint8  u8  { array_set }
cell uint64 u64 { create get array_create array_get array_set }
cell int32  i32 { create get array_create array_get array_set }
