# The headers that a program can use against the shared library.
set(public_headers
    address_grammar/commandformatter.h
    address_grammar/communicatorcommand.h
    address_grammar/communicatorcommandt.h
    address_grammar/multiplerule.h
    address_grammar/scripthook.h
    label_table/commandinformationitem.h
    label_table/commandinformationtalbe.h
    label_table/dynamiclabelcreatorinterface.h
    label_table/labelinterface.h
    label_table/labelloader.h
    label_table/labeltype.h
    label_store/labelstore.h
    tag_store/filtertools.h
    tag_store/systemtagiteminformation.h
    tag_store/tagsystem.h
    tag_values/bytearrayconversion.h)
