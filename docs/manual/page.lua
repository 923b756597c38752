-- Makes a page of the manual of a document: links lead to pages, wide tables scroll by themselves, and the first heading
-- is the title.

function Link(link)
    if not link.target:find("^%a+:") then
        link.target = link.target:gsub("^([%w-]+)%.md", "%1.html")
    end
    return link
end

function Table(tbl) return pandoc.Div(tbl, { class = "table" }) end

function Pandoc(document)
    for _, block in ipairs(document.blocks) do
        if block.t == "Header" then
            document.meta.pagetitle = pandoc.utils.stringify(block)
            return document
        end
    end
end
